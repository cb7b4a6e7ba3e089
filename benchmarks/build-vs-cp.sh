#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# pct build and pct check on a large package, in turns in one run, medians. A build forces its package to the disk, so it
# is shown as a multiple of one cp of the package that is forced to the disk, beside expanding and flattening with our
# tools and with bsdtar, forced to the disk alike; the check as a multiple of the check of a small package.
#
# usage: build-vs-cp.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]
set -euo pipefail

build=$(cd "${1:?usage: build-vs-cp.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]}" && pwd)
size=${2:-1024}
rounds=${3:-5}
root=$(cd "$(dirname "$0")/.." && pwd)
pct=$build/bin/pct
tools=$build/libexec/pct

work=$(mktemp -d "${TMPDIR:-/tmp}/pct-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work
make_package() {
    "$root/tests/support/vendorpackage/make-vendor-package" --product editor --output "$1" \
        --payload-size "$2" --compression none
}
make_package "$work/small.pkg" 1
make_package "$work/large.pkg" "$size"

force_to_disk() { command sync "$work/out.pkg" "$work"; }
copy() { cp --reflink=never "$work/large.pkg" "$work/out.pkg" && force_to_disk; }
tools_alone() {
    "$tools/pkgutil" --expand "$work/large.pkg" "$work/tree"
    "$tools/pkgutil" --flatten "$work/tree" "$work/out.pkg"
    force_to_disk
}
bsdtar_alone() {
    mkdir "$work/tree"
    bsdtar -x -f "$work/large.pkg" -C "$work/tree"
    (cd "$work/tree" && bsdtar -c -f "$work/out.pkg" --format xar \
        --options xar:compression=none,xar:checksum=sha1,xar:toc-checksum=sha1 ./*)
    force_to_disk
}
whole_build() {
    "$pct" build -q --product editor --input "$work/large.pkg" --output "$work/out.pkg"
}
check_small() { "$pct" check --product editor "$work/small.pkg" >/dev/null; }
check_large() { "$pct" check --product editor "$work/large.pkg" >/dev/null; }

declare -A times
measure() {
    sync
    local start=${EPOCHREALTIME/./}
    "$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
ratio() { awk -v a="$(median "$1")" -v b="$(median "$2")" 'BEGIN { printf "%.2f", a / b }'; }

# What a build takes beyond its two commands, in copies.
own_part() {
    awk -v build="$(median whole_build)" -v tools="$(median tools_alone)" -v cp="$(median copy)" \
        'BEGIN { printf "%.2f", (build - tools) / cp }'
}

cat "$work/large.pkg" >/dev/null
for ((round = 0; round < rounds; ++round)); do
    for what in copy tools_alone whole_build bsdtar_alone check_small check_large; do
        measure "$what"
        rm -rf "$work/tree" "$work/out.pkg"
    done
done
echo "package of $size MiB, $rounds rounds, multiples of one cp of it, all forced to the disk"
echo "pkgutil --expand and --flatten: $(ratio tools_alone copy)"
echo "pct build: $(ratio whole_build copy) (bar: 2.4), of it pct's own part $(own_part) (bar: 0.1)"
echo "bsdtar, without unpacking scripts: $(ratio bsdtar_alone copy), $(ratio bsdtar_alone whole_build) times pct build (bar: 3.4)"
echo "pct check of the large package, as a multiple of that of a small one: $(ratio check_large check_small)"
