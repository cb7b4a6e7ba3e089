#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# check-bundle.sh BUNDLE
#
# Tells what an application bundle lacks, and which of its programs and libraries would look for a library outside
# the bundle and the system. The tool that puts Qt into a bundle ends with success also when it could not.
set -eu

[ $# -eq 1 ] || {
    echo "usage: check-bundle.sh BUNDLE" >&2
    exit 2
}
bundle=${1%/}
name=$(basename "$bundle" .app)

missing_files() {
    for file in Info.plist "MacOS/$name" MacOS/pct \
        Resources/AppIcon.icns Resources/LICENSE Resources/qt.conf Resources/pcw/en-US/Welcome.html \
        Frameworks/QtCore.framework Frameworks/QtGui.framework Frameworks/QtWidgets.framework \
        Frameworks/QtXml.framework PlugIns/platforms/libqcocoa.dylib; do
        [ -e "$bundle/Contents/$file" ] || echo "Contents/$file is missing"
    done
}

binaries() {
    find "$bundle/Contents/MacOS" "$bundle/Contents/Frameworks" "$bundle/Contents/PlugIns" -type f \
        \( -perm -100 -o -name '*.dylib' \) 2>/dev/null
}

# foreign_libraries FILE: the libraries that it wants from elsewhere; lines without an indent name the file itself
foreign_libraries() {
    otool -L "$1" | sed -n 's/^[[:space:]]\{1,\}\(.*\) (compatibility.*/\1/p' |
        grep -v -e '^@' -e '^/usr/lib/' -e '^/System/Library/' | sed "s|^|${1#"$bundle/"} wants |"
}

all_foreign_libraries() {
    command -v otool >/dev/null 2>&1 || return 0
    binaries | while IFS= read -r file; do
        foreign_libraries "$file" || true
    done
}

problems=$(missing_files; all_foreign_libraries)
[ -n "$problems" ] || exit 0
echo "$problems" >&2
exit 1
