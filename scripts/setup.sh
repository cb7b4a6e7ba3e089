#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# setup.sh: installs what building, running and testing need and this machine lacks. Asks nothing.
# A user who is not root needs sudo only when something is missing.
set -eu

here=$(cd "$(dirname "$0")" && pwd)

missing_on_debian() {
    wanted=$(sed -e 's/#.*//' "$here/packages-debian.txt")
    for package in $wanted; do
        state=$(dpkg-query -W -f '${db:Status-Abbrev}' "$package" 2>/dev/null || true)
        case $state in
            ?i*) ;;
            *) printf '%s ' "$package" ;;
        esac
    done
}

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null 2>&1; then
        sudo "$@"
    else
        echo "setup: these packages are missing and need root to be installed: $missing" >&2
        exit 1
    fi
}

if ! command -v dpkg-query >/dev/null 2>&1; then
    echo "setup: this is no Debian system; install what CONTRIBUTING.md lists, then run this again" >&2
    command -v cmake >/dev/null 2>&1 || exit 1
    exit 0
fi

missing=$(missing_on_debian)
[ -n "$missing" ] || exit 0
echo "setup: installing $missing" >&2
as_root apt-get update -qq
# The names are meant to be split into words.
# shellcheck disable=SC2086
as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >&2
