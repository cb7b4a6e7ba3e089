#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Taking a flat package apart and putting it together: our pkgutil against bsdtar and against what the machine
# can do at all, as multiples of one cp of the package, measured in turns in one run. Prints medians, the best of
# each (which tells more on a machine with other work to do) and our peak memory.
#
# The limit of expanding is one copy beside one SHA-1 of the package, in two threads; that of flattening is one copy.
# "Forced to disk" is all of it with the package and its folder synced, as multiples of a cp that is synced.
#
# usage: flatpkg-vs-bsdtar.sh [MEBIBYTES [ROUNDS]]
# PCT_HOSTTOOLS names the folder with our pkgutil; without it the newest one below build/ is taken.
set -euo pipefail

size=${1:-1024}
rounds=${2:-3}
root=$(cd "$(dirname "$0")/.." && pwd)

newest_build() {
    find "$root/build" -path '*/libexec/pct/pkgutil' -type f -printf '%T@ %h\n' 2>/dev/null | sort -rn | head -n 1 | cut -d ' ' -f 2-
}

tools=${PCT_HOSTTOOLS:-$(newest_build)}
if [[ ! -x $tools/pkgutil ]]; then
    echo "flatpkg-vs-bsdtar: no pkgutil found; build it or set PCT_HOSTTOOLS" >&2
    exit 1
fi

work=$(mktemp -d "${TMPDIR:-/tmp}/flatpkg-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
free=$(df --output=avail -m "$work" | tail -n 1)
if ((free < 5 * size + 500)); then
    echo "flatpkg-vs-bsdtar: $((5 * size + 500)) MiB needed in $work, $free MiB free" >&2
    exit 1
fi

make_package() {
    local component=$work/source/Sample.pkg
    mkdir -p "$component" "$work/scripts"
    head -c "$((size * 1024 * 1024))" /dev/urandom >"$component/Payload"
    head -c 200000 /dev/urandom >"$component/Bom"
    echo '<pkg-info identifier="com.example.sample"/>' >"$component/PackageInfo"
    echo '<installer-gui-script><title>Sample</title></installer-gui-script>' >"$work/source/Distribution"
    for script in preinstall postinstall; do
        printf '#!/bin/sh\nexit 0\n' >"$work/scripts/$script"
        chmod 755 "$work/scripts/$script"
    done
    pack_scripts "$work/scripts" "$component/Scripts"
    pack_xar "$work/source" "$work/sample.pkg"
    rm -r "$work/source"
}

pack_scripts() { bsdtar -c -z -f "$2" --format odc -C "$1" .; }
pack_xar() { (cd "$1" && bsdtar -c -f "$2" --format xar --options xar:compression=none,xar:checksum=sha1,xar:toc-checksum=sha1 ./*); }

bsdtar_expand() {
    mkdir "$work/tree" && bsdtar -x -f "$work/sample.pkg" -C "$work/tree"
    local scripts=$work/tree/Sample.pkg/Scripts
    mv "$scripts" "$work/packed" && mkdir "$scripts" && bsdtar -x -f "$work/packed" -C "$scripts"
}
bsdtar_flatten() {
    local scripts=$work/tree/Sample.pkg/Scripts
    pack_scripts "$scripts" "$work/packed" && rm -r "$scripts" && mv "$work/packed" "$scripts"
    pack_xar "$work/tree" "$work/out.pkg"
}
copy() { cp --reflink=never "$work/sample.pkg" "$work/out.pkg"; }
copy_beside_sha1() { python3 "$root/benchmarks/copy-beside-sha1.py" "$work/sample.pkg" "$work/out.pkg"; }
force_to_disk() { command sync "$work/out.pkg" "$work"; }
ours_expand() { "$tools/pkgutil" --expand "$work/sample.pkg" "$work/tree"; }
ours_flatten() { "$tools/pkgutil" --flatten "$work/tree" "$work/out.pkg"; }

declare -A times
# measure NAME COMMAND...: runs the commands (functions without arguments) and notes their microseconds.
measure() {
    local name=$1 start command
    shift
    sync
    start=${EPOCHREALTIME/./}
    for command; do "$command"; done
    times[$name]+="$((${EPOCHREALTIME/./} - start)) "
}
# note NAME COMMAND: takes the microseconds that the command itself prints.
note() {
    sync
    times[$1]+="$("$2") "
}
sorted() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n; }
median() { sorted "$1" | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
best() { sorted "$1" | head -n 1; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a / b }'; }

# peak COMMAND...: the most memory that it held, in MiB.
peak() {
    if [[ ! -x /usr/bin/time ]]; then
        "$@" && echo "not measured"
        return
    fi
    /usr/bin/time -f %M -o "$work/peak" "$@" && awk '{ printf "%.0f MiB", $1 / 1024 }' "$work/peak"
}

make_package
cat "$work/sample.pkg" >/dev/null
for ((round = 0; round < rounds; ++round)); do
    measure copy copy && rm "$work/out.pkg"
    note sha1 copy_beside_sha1 && rm "$work/out.pkg"
    measure ours_expand ours_expand && measure ours_flatten ours_flatten && rm -r "$work/tree" "$work/out.pkg"
    measure bsdtar_expand bsdtar_expand && measure bsdtar_flatten bsdtar_flatten && rm -r "$work/tree" "$work/out.pkg"
    measure copy_forced copy force_to_disk && rm "$work/out.pkg"
    measure ours_forced ours_expand ours_flatten force_to_disk && rm -r "$work/tree" "$work/out.pkg"
    measure bsdtar_forced bsdtar_expand bsdtar_flatten force_to_disk && rm -r "$work/tree" "$work/out.pkg"
done

row() { printf '%-26s %7s %7s %7s %7s\n' "$@"; }
plus() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.2f", a + b }'; }

# report TITLE PICK: one table; PICK (median or best) chooses among the rounds.
report() {
    local cp limit ours bsdtar
    cp=$("$2" copy)
    limit=$("$2" sha1)
    ours=$(($("$2" ours_expand) + $("$2" ours_flatten)))
    bsdtar=$(($("$2" bsdtar_expand) + $("$2" bsdtar_flatten)))
    row "$1" limit bar ours bsdtar
    row expand "$(ratio "$limit" "$cp")" "$(plus "$(ratio "$limit" "$cp")" 0.2)" "$(ratio "$("$2" ours_expand)" "$cp")" "$(ratio "$("$2" bsdtar_expand)" "$cp")"
    row flatten 1.00 1.20 "$(ratio "$("$2" ours_flatten)" "$cp")" "$(ratio "$("$2" bsdtar_flatten)" "$cp")"
    row 'expand, Scripts, flatten' "$(ratio "$((limit + cp))" "$cp")" "$(plus "$(ratio "$((limit + cp))" "$cp")" 0.5)" "$(ratio "$ours" "$cp")" "$(ratio "$bsdtar" "$cp")"
    cp=$("$2" copy_forced)
    row 'the same, forced to disk' '' '' "$(ratio "$("$2" ours_forced)" "$cp")" "$(ratio "$("$2" bsdtar_forced)" "$cp")"
    echo "ours is $(ratio "$bsdtar" "$ours") times as fast as bsdtar (bar: 4.3), forced to disk" \
        "$(ratio "$("$2" bsdtar_forced)" "$("$2" ours_forced)") times"
    echo "cp copies $(speed "$("$2" copy)"), SHA-1 beside it hashes $(speed "$limit")"
}
speed() { awk -v us="$1" -v mib="$size" 'BEGIN { printf "%.0f MiB/s", mib * 1000000 / us }'; }

echo "package of $size MiB, $rounds rounds, multiples of one cp of it"
report medians median
report 'best of each' best
echo "peak memory: expand $(peak "$tools/pkgutil" --expand "$work/sample.pkg" "$work/tree")," \
    "flatten $(peak "$tools/pkgutil" --flatten "$work/tree" "$work/out.pkg")"
