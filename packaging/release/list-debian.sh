#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# list-debian.sh PACKAGE.deb...
#
# The installed versions of the packages that the given ones depend on, one package URL a line: what they were built
# with. They carry none of it.
set -eu

[ $# -gt 0 ] || {
    echo "usage: list-debian.sh PACKAGE.deb..." >&2
    exit 2
}

# One name a line: of alternatives the first, without versions.
dependencies() {
    for package in "$@"; do
        dpkg-deb --field "$package" Depends
    done | tr ',' '\n' | sed -e 's/|.*//' -e 's/(.*//' -e 's/[[:space:]]//g' | LC_ALL=C sort -u
}

dependencies "$@" | while IFS= read -r name; do
    version=$(dpkg-query --show --showformat '${Version}' "$name" 2>/dev/null) || continue
    [ -z "$version" ] || printf 'pkg:deb/debian/%s@%s\n' "$name" "$version"
done
