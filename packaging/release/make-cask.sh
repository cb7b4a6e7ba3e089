#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# make-cask.sh VERSION HOMEPAGE FOLDER
#
# Makes FOLDER/pelix-customization-tool.rb, the Homebrew cask of a version, of its template and of the two disk images
# in FOLDER, whose names tell for which macOS and processor they are.
set -eu

here=$(cd "$(dirname "$0")" && pwd)

fail() {
    echo "make-cask.sh: $1" >&2
    exit 1
}

# image ARCHITECTURE: the path of the disk image for it
image() {
    set -- "$folder/Pelix-Customization-Tool-$version-macOS"*"-$1.dmg"
    [ -f "$1" ] || fail "$(basename "$1") is missing in $folder"
    echo "$1"
}

# system ARCHITECTURE: the oldest macOS that the image is for, as a number
system() {
    path=$(image "$1")
    number=${path#*-macOS}
    echo "${number%%-*}"
}

# Homebrew names systems instead of counting them.
name_of_system() {
    case $1 in
        11) echo big_sur ;;
        12) echo monterey ;;
        13) echo ventura ;;
        14) echo sonoma ;;
        15) echo sequoia ;;
        26) echo tahoe ;;
        *) fail "Homebrew's name of macOS $1 is not known here; add it" ;;
    esac
}

digest() {
    path=$(image "$1")
    openssl dgst -sha256 -r "$path" | cut -d ' ' -f 1
}

[ $# -eq 3 ] || {
    echo "usage: make-cask.sh VERSION HOMEPAGE FOLDER" >&2
    exit 2
}
version=$1 homepage=$2 folder=$3
arm_system=$(system arm64)
intel_system=$(system x86_64)
[ "$arm_system" = "$intel_system" ] || fail "the images are for macOS $arm_system and macOS $intel_system"
oldest=$(name_of_system "$arm_system")
arm_digest=$(digest arm64)
intel_digest=$(digest x86_64)

sed -e "s|@VERSION@|$version|" -e "s|@HOMEPAGE@|$homepage|" -e "s|@SYSTEM@|$arm_system|" \
    -e "s|@OLDEST@|$oldest|" -e "s|@ARM_SHA256@|$arm_digest|" -e "s|@INTEL_SHA256@|$intel_digest|" \
    "$here/../homebrew/pelix-customization-tool.rb.in" >"$folder/pelix-customization-tool.rb"
