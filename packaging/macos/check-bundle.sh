#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# check-bundle.sh BUNDLE
#
# Tells what an application bundle lacks, and which of its programs and libraries would look for a library outside
# the bundle and the system, or for one that is not in the bundle. The tool that puts Qt into a bundle ends with success
# also when it could not.
set -eu

[ $# -eq 1 ] || {
    echo "usage: check-bundle.sh BUNDLE" >&2
    exit 2
}
bundle=${1%/}
name=$(basename "$bundle" .app)
programs=$bundle/Contents/MacOS

missing_files() {
    for file in Info.plist "MacOS/$name" MacOS/pct \
        Resources/AppIcon.icns Resources/LICENSE Resources/qt.conf Resources/pcw/en-US/Welcome.html \
        Resources/completions/_pct Frameworks/QtCore.framework Frameworks/QtGui.framework \
        Frameworks/QtWidgets.framework Frameworks/QtXml.framework PlugIns/platforms/libqcocoa.dylib; do
        [ -e "$bundle/Contents/$file" ] || echo "Contents/$file is missing"
    done
}

binaries() {
    find "$programs" "$bundle/Contents/Frameworks" "$bundle/Contents/PlugIns" -type f \
        \( -perm -100 -o -name '*.dylib' \) 2>/dev/null
}

# wanted_by FILE: what it loads; lines without an indent name the file itself, and so does a library's first
wanted_by() {
    otool -L "$1" | sed -n 's/^[[:space:]]\{1,\}\(.*\) (compatibility.*/\1/p' | grep -vxF "$(own_name "$1")"
}

# own_name FILE: under which name a library wants to be loaded; programs and plug-ins may have none
own_name() {
    otool -D "$1" | sed -n '2p'
}

# run_paths FILE: where it looks for what begins with @rpath
run_paths() {
    otool -l "$1" | awk '$1 == "cmd" { inside = $2 == "LC_RPATH" } inside && $1 == "path" { sub(/^ *path /, ""); sub(/ \(offset.*/, ""); print }'
}

# place PATH FILE: the path with what stands for a folder filled in, as for FILE
place() {
    case $1 in
        @executable_path/*) echo "$programs/${1#*/}" ;;
        @loader_path/*) echo "$(dirname "$2")/${1#*/}" ;;
        @executable_path) echo "$programs" ;;
        @loader_path) dirname "$2" ;;
        *) echo "$1" ;;
    esac
}

# is_on_run_path LIBRARY FILE: a library that a program loads is looked for on the program's run paths, too
is_on_run_path() {
    for file in "$2" "$programs/$name" "$programs/pct"; do
        run_paths "$file" | while IFS= read -r folder; do
            [ ! -e "$(place "$folder" "$file")/$1" ] || echo found
        done
    done | grep -q found
}

# is_there LIBRARY FILE: the system or the bundle has it
is_there() {
    case $1 in
        /usr/lib/* | /System/Library/*) return 0 ;;
        @rpath/*) is_on_run_path "${1#@rpath/}" "$2" ;;
        @*) [ -e "$(place "$1" "$2")" ] ;;
        *) return 1 ;;
    esac
}

# problems_of FILE: the libraries that it would not find, or find elsewhere
problems_of() {
    wanted_by "$1" | while IFS= read -r library; do
        is_there "$library" "$1" || echo "${1#"$bundle/"} wants $library"
    done
}

all_missing_libraries() {
    command -v otool >/dev/null 2>&1 || return 0
    binaries | while IFS= read -r file; do
        problems_of "$file"
    done
}

problems=$(missing_files; all_missing_libraries)
[ -n "$problems" ] || exit 0
echo "$problems" >&2
exit 1
