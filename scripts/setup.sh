#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# setup.sh [run|test]: installs what this machine lacks, either to build and run only, or (without an argument as well)
# to test, too. Asks nothing. On Debian, a user who is not root needs sudo only when something is missing; on a Mac,
# Homebrew installs for the user.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
purpose=${1:-test}

# wanted LIST: the names in one of the lists beside this script, for the purpose
wanted() {
    if [ "$purpose" = run ]; then
        sed -e '/^# test$/,$d' -e 's/#.*//' "$here/$1"
    else
        sed -e 's/#.*//' "$here/$1"
    fi
}

# alternatives NAMES: the words of "a|b"
alternatives() {
    echo "$1" | sed -e 's/|/ /g'
}

is_installed() {
    for name in $(alternatives "$1"); do
        case $(dpkg-query -W -f '${db:Status-Abbrev}' "$name" 2>/dev/null || true) in
            ?i*) return 0 ;;
        esac
    done
    return 1
}

missing_on_debian() {
    for names in $(wanted packages-debian.txt); do
        is_installed "$names" || printf '%s ' "$names"
    done
}

# first_there_is NAMES: the first of "a|b" that this suite has; what stands alone is not asked about
first_there_is() {
    for name in $(alternatives "$1"); do
        [ "$name" != "$1" ] || break
        [ -z "$(apt-cache show --no-all-versions "$name" 2>/dev/null)" ] || break
    done
    printf '%s ' "$name"
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
    chosen=$(for names in $missing; do first_there_is "$names"; done)
    # The names are meant to be split into words.
    # shellcheck disable=SC2086
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends $chosen >&2
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

case $purpose in
    run | test) ;;
    *)
        echo "usage: setup.sh [run|test]" >&2
        exit 2
        ;;
esac
if [ "$(uname)" = Darwin ] && command -v brew >/dev/null 2>&1; then
    install_on_mac
elif command -v dpkg-query >/dev/null 2>&1; then
    install_on_debian
else
    install_nothing
fi
