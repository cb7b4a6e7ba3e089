#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check-reproducible-deb.sh [CMAKE-OPTION...]: builds the Debian packages of the last commit twice, in different
# folders and surroundings, and fails unless both times they have the same bytes. Both builds
# compile everything, because a compiler cache would hide what depends on the folder.
set -eu
sources=$(cd "$(dirname "$0")/.." && pwd)
commit=$(git -C "$sources" rev-parse HEAD)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export CCACHE_DISABLE=1
unset SOURCE_DATE_EPOCH

# build FOLDER UMASK TIMEZONE LANGUAGE [CMAKE-OPTION...]
build() {
    folder=$work/$1 mask=$2 timezone=$3 language=$4
    shift 4
    mkdir -p "$folder"
    git clone --quiet --no-checkout "$sources" "$folder/sources"
    git -C "$folder/sources" checkout --quiet "$commit"
    (
        umask "$mask"
        TZ=$timezone LC_ALL=$language "$folder/sources/scripts/build-deb.sh" "$folder/packages" "$@"
    ) >"$folder/log" 2>&1 || {
        tail -n 40 "$folder/log" >&2
        return 1
    }
}

build one 022 UTC C "$@"
build another/and/a/longer/one 077 Pacific/Auckland C.UTF-8 "$@"

different=0
for package in "$work"/one/packages/*.deb; do
    name=$(basename "$package")
    sha256sum "$package" | sed "s|  .*|  $name|"
    cmp "$package" "$work/another/and/a/longer/one/packages/$name" || different=1
done
exit "$different"
