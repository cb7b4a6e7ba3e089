#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# setup.sh: installs what building, running and testing need and this machine lacks. Asks nothing.
# On Debian, a user who is not root needs sudo only when something is missing; on a Mac, Homebrew installs for the user.
set -eu

here=$(cd "$(dirname "$0")" && pwd)

# wanted LIST: the names in one of the lists beside this script
wanted() {
    sed -e 's/#.*//' "$here/$1"
}

missing_on_debian() {
    for package in $(wanted packages-debian.txt); do
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

install_on_debian() {
    missing=$(missing_on_debian)
    [ -n "$missing" ] || return 0
    echo "setup: installing $missing" >&2
    as_root apt-get update -qq
    # The names are meant to be split into words.
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $missing >&2
}

missing_on_mac() {
    for formula in $(wanted packages-homebrew.txt); do
        brew list --versions "$formula" >/dev/null 2>&1 || printf '%s ' "$formula"
    done
}

install_on_mac() {
    missing=$(missing_on_mac)
    [ -n "$missing" ] || return 0
    echo "setup: installing $missing" >&2
    # The names are meant to be split into words.
    # shellcheck disable=SC2086
    NONINTERACTIVE=1 brew install --quiet $missing >&2
}

# Elsewhere whoever has a CMake is trusted to have the rest.
install_nothing() {
    echo "setup: this is neither Debian nor a Mac with Homebrew; install what CONTRIBUTING.md lists, then run this again" >&2
    command -v cmake >/dev/null 2>&1 || exit 1
}

if [ "$(uname)" = Darwin ] && command -v brew >/dev/null 2>&1; then
    install_on_mac
elif command -v dpkg-query >/dev/null 2>&1; then
    install_on_debian
else
    install_nothing
fi
