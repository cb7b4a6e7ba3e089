#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# check-apple-syntax.sh QT-HEADERS [FILE...]
#
# Compiles, as far as to know that they are right, the sources that only a Mac can link: every *_mac.cpp and
# *_mac.mm of the tool, and all of its Objective-C, or the files named. For machines without Apple's headers:
# GNUstep's stand for Foundation and AppKit, cmake/apple-declarations for the rest, and the compiler is told that
# the system is macOS, so that Qt shows its interface for it. An unknown selector is an error, and so is a
# warning.
#
# QT-HEADERS is the folder that holds QtCore/. CPPFLAGS, when set, gives more options.
# Exit status: 0 all right, 1 mistakes found, 2 wrong usage, 77 clang or GNUstep's headers are missing.
#
# It has to be clang: Apple's compiler is one, and GCC refuses Qt 5's widgets in Objective-C++.
set -eu

root=$(cd "$(dirname "$0")/.." && pwd)
tool_folders='app cli config core package pages profile resources welcome'
compiler=${PCT_CLANG:-clang++}

usage() {
    echo "usage: check-apple-syntax.sh QT-HEADERS [FILE...]" >&2
    exit 2
}

# Debian has moved them into the folder of the architecture.
gnustep_headers() {
    for folder in /usr/include/GNUstep /usr/include/*/GNUstep; do
        [ ! -d "$folder/AppKit" ] || echo "$folder"
    done | head -n 1
}

require_headers() {
    command -v "$compiler" >/dev/null 2>&1 && command -v gcc >/dev/null 2>&1 && [ -n "$gnustep" ] && return
    echo "check-apple-syntax: needs clang, gobjc++ and libgnustep-gui-dev" >&2
    exit 77
}

all_sources() {
    for folder in $tool_folders; do
        find "$root/$folder" -name '*_mac.cpp' -o -name '*.mm' -o -name '*.m'
    done | sort
}

language_options() {
    case $1 in
    *.m) echo '-x objective-c -std=gnu11' ;;
    *.mm) echo '-x objective-c++ -std=c++17 -Wno-deprecated-declarations' ;;
    *) echo '-x c++ -std=c++17 -Wnon-virtual-dtor -Wold-style-cast -Woverloaded-virtual' ;;
    esac
}

# GNUstep's headers need the runtime's, which GCC keeps with headers that are not for clang: those come last.
check() {
    # The options are words without spaces.
    # shellcheck disable=SC2046,SC2086
    "$compiler" $(language_options "$1") -fsyntax-only -fPIC \
        -Wall -Wextra -Wpedantic -Wshadow -Wcast-align -Wundeclared-selector -Werror \
        -Wno-gnu-zero-variadic-macro-arguments -Wno-c++20-extensions -Wno-unused-command-line-argument \
        -U__linux__ -U__linux -U__gnu_linux__ -D__APPLE__ -D__MACH__ \
        -fobjc-runtime=macosx-11.0 -fblocks -fobjc-exceptions -fconstant-string-class=NSConstantString \
        -DGNUSTEP -DGNUSTEP_BASE_LIBRARY=1 -DGNU_GUI_LIBRARY=1 -D_NATIVE_OBJC_EXCEPTIONS \
        ${CPPFLAGS:-} -I "$root" \
        -isystem "$root/cmake/apple-declarations" -isystem "$gnustep" -isystem "$qt" \
        -isystem "$qt/QtCore" -isystem "$qt/QtGui" -isystem "$qt/QtWidgets" -isystem "$qt/QtXml" \
        -idirafter "$(gcc -print-file-name=include)" \
        "$1"
}

# check_all: checks the files that standard input lists
check_all() {
    count=0 failed=0
    while IFS= read -r source; do
        count=$((count + 1))
        check "$source" || failed=1
    done
    [ $failed -eq 0 ] || return 1
    if [ $count -eq 0 ]; then
        echo "check-apple-syntax: found no files to check" >&2
        return 1
    fi
    echo "check-apple-syntax: $count files are right"
}

[ $# -ge 1 ] || usage
qt=$1
shift
[ -d "$qt/QtCore" ] || usage
gnustep=$(gnustep_headers)
require_headers

if [ $# -eq 0 ]; then
    all_sources | check_all
else
    printf '%s\n' "$@" | check_all
fi
