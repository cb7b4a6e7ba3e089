#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Taking a flat package apart and putting it together where files can share blocks: on xfs, in a file that is mounted for
# it. Needs root and mkfs.xfs. Prints multiples of one cp that shares nothing, and how much of each result shares
# its blocks.
#
# usage: flatpkg-sharing.sh [MEBIBYTES [ROUNDS]]
# PCT_HOSTTOOLS names the folder with our pkgutil.
set -euo pipefail

size=${1:-200}
rounds=${2:-5}
tools=${PCT_HOSTTOOLS:?the folder with our pkgutil}

work=$(mktemp -d "${TMPDIR:-/tmp}/flatpkg-sharing.XXXXXX")
disk=$work/mounted
clean_up() {
    mountpoint -q "$disk" && umount "$disk"
    rm -rf "$work"
}
trap clean_up EXIT

mkdir "$disk"
truncate -s "$((6 * size + 600))M" "$work/image"
mkfs.xfs -q -m reflink=1 "$work/image"
mount -o loop "$work/image" "$disk"

# Our own packages have the payload on a page, vendors' rarely have it.
make_packages() {
    mkdir -p "$disk/tree/Sample.pkg/Scripts"
    head -c "$((size * 1024 * 1024))" /dev/urandom >"$disk/tree/Sample.pkg/Payload"
    printf '#!/bin/sh\nexit 0\n' >"$disk/tree/Sample.pkg/Scripts/postinstall"
    "$tools/pkgutil" --flatten "$disk/tree" "$disk/aligned.pkg"
    rm -r "$disk/tree"
    "$tools/pkgutil" --expand "$disk/aligned.pkg" "$disk/tree"
    (cd "$disk/tree" && rm -r Sample.pkg/Scripts && bsdtar -c -f "$disk/foreign.pkg" --format xar \
        --options xar:compression=none,xar:checksum=sha1,xar:toc-checksum=sha1 ./*)
    rm -r "$disk/tree"
}

declare -A times
declare -a expanded=() flattened=()
# measure NAME COMMAND...: runs the command on a disk that is at rest and notes its microseconds.
measure() {
    local name=$1 start
    shift
    sync -f "$disk"
    start=${EPOCHREALTIME/./}
    "$@"
    times[$name]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
ratio() { awk -v a="$(median "$1")" -v b="$(median copy)" 'BEGIN { printf "%.2f", a / b }'; }

# shared FILE: how much of its space other files use as well.
shared() {
    sync "$1"
    filefrag -v "$1" | awk '/^ +[0-9]+:/ { n = $6 + 0; all += n; if (/shared/) some += n } END { printf "%.0f %%", 100 * some / all }'
}

make_packages
for ((round = 0; round < rounds; ++round)); do
    for kind in aligned foreign; do
        cat "$disk/$kind.pkg" >/dev/null
        measure copy cp --reflink=never "$disk/$kind.pkg" "$disk/out.pkg"
        rm "$disk/out.pkg"
        measure "expand_$kind" "$tools/pkgutil" --expand "$disk/$kind.pkg" "$disk/tree"
        expanded[${#expanded[@]}]="$kind: $(shared "$disk/tree/Sample.pkg/Payload")"
        measure "flatten_$kind" "$tools/pkgutil" --flatten "$disk/tree" "$disk/out.pkg"
        flattened[${#flattened[@]}]="$kind: $(shared "$disk/out.pkg")"
        rm -r "$disk/tree" "$disk/out.pkg"
    done
done

echo "package of $size MiB on xfs, $rounds rounds, multiples of one cp --reflink=never of it"
for kind in aligned foreign; do
    echo "$kind: expand $(ratio "expand_$kind"), flatten $(ratio "flatten_$kind")"
done
echo "shared blocks of the expanded payload: ${expanded[-2]}, ${expanded[-1]}; of the flattened package: ${flattened[-2]}, ${flattened[-1]}"
