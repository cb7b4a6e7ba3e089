#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check-layers.sh [PROJECT]: holds every #include to the table of folders in CONTRIBUTING.md, and the table to the
# folders that there are. Prints what is wrong and fails when there is something. PROJECT is this one by default.
set -eu
cd "${1:-"$(dirname "$0")/.."}"

# Each row of the table as "row FOLDER: FOLDERS that it may include".
rows() {
    # shellcheck disable=SC2016 # The backquotes are Markdown's.
    sed -n '/^## Layout$/,/^## /s/^| `\([^`]*\)\/` |.*| *\([^|]*[^| ]\)\{0,1\} *|$/row \1: \2/p' CONTRIBUTING.md | tr -d ,
}

# "folder FOLDER" of each at the top, and "sources FOLDER" of those that CMake builds
folders() {
    find . -mindepth 1 -maxdepth 1 -type d | sed 's|^\./|folder |'
    find . -mindepth 2 -maxdepth 2 -name CMakeLists.txt | sed 's|^\./\(.*\)/CMakeLists.txt$|sources \1|'
}

# FILE:LINE:#include "FILE" of all sources
includes() {
    find . -path ./build -prune -o -type f \( -name '*.h' -o -name '*.cpp' -o -name '*.mm' -o -name '*.m' \) -print |
        sed 's|^\./||' | xargs grep -nHE '^#(include|import) "[^"/]*/'
}

{
    rows
    folders
    includes
} | awk '
    function wrong(text) {
        print text
        failed = 1
    }

    # The nearest folder above a file that has a row; the folder at the top where none has.
    function rowOf(path) {
        while (!(path in allowed) && sub("/[^/]*$", "", path)) {}
        return path
    }

    function isIn(path, folder) {
        return index(path "/", folder "/") == 1
    }

    function mayInclude(folder, target,    names, i) {
        if (allowed[folder] == "everything" || isIn(target, folder))
            return 1
        for (i = split(allowed[folder], names, " "); i > 0; --i)
            if (isIn(target, names[i]))
                return 1
        return 0
    }

    function needFolders(list,    names, i) {
        for (i = split(list, names, " "); i > 0; --i)
            if (names[i] != "everything" && system("test -d \"" names[i] "\"") != 0)
                wrong("CONTRIBUTING.md: there is no folder " names[i] "/")
    }

    $1 == "row" {
        folder = substr($2, 1, length($2) - 1)
        if (folder in allowed)
            wrong("CONTRIBUTING.md: " folder "/ has two rows")
        sub("^[^:]*: *", "")
        allowed[folder] = $0
        ++rows
        needFolders(folder " " $0)
        next
    }

    $1 == "folder" {
        isFolder[$2] = 1
        next
    }

    $1 == "sources" {
        if (!($2 in allowed))
            wrong("CONTRIBUTING.md: " $2 "/ has no row")
        next
    }

    {
        split($0, place, ":")
        split($0, quoted, "\"")
        top = substr(quoted[2], 1, index(quoted[2], "/") - 1)
        source = rowOf(place[1])
        if (!(top in isFolder))
            next
        if (!(source in allowed) || !(top in allowed))
            wrong(place[1] ":" place[2] ": " (source in allowed ? top : source) "/ has no row in CONTRIBUTING.md")
        else if (!mayInclude(source, quoted[2]))
            wrong(place[1] ":" place[2] ": " source "/ may not include " quoted[2])
    }

    END {
        if (!rows)
            wrong("CONTRIBUTING.md: there is no table of folders")
        exit failed
    }' >&2
