#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# list-brewed.sh FORMULA...
#
# The installed versions of Homebrew's formulae and of what they depend on, one package URL a line: what a bundle that
# was made here may carry.
set -eu

[ $# -gt 0 ] || {
    echo "usage: list-brewed.sh FORMULA..." >&2
    exit 2
}
dependencies=$(brew deps --installed --union "$@")
# The names are words.
# shellcheck disable=SC2086
brew list --versions "$@" $dependencies | LC_ALL=C sort -u | awk '{ printf "pkg:brew/%s@%s\n", $1, $NF }'
