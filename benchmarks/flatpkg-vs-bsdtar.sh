#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Taking a flat package apart and putting it together: our pkgutil against bsdtar, both as multiples of one
# cp of the package, measured in turns in one run. Prints medians, the best of each (which tells more on a
# machine with other work to do) and our peak memory.
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
copy() { cp "$work/sample.pkg" "$work/out.pkg"; }
ours_expand() { "$tools/pkgutil" --expand "$work/sample.pkg" "$work/tree"; }
ours_flatten() { "$tools/pkgutil" --flatten "$work/tree" "$work/out.pkg"; }

declare -A times
# measure NAME: runs the function NAME and notes its microseconds.
measure() {
    sync
    local start=${EPOCHREALTIME/./}
    "$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
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
    measure copy && rm "$work/out.pkg"
    measure ours_expand && measure ours_flatten && rm -r "$work/tree" "$work/out.pkg"
    measure bsdtar_expand && measure bsdtar_flatten && rm -r "$work/tree" "$work/out.pkg"
done

row() { printf '%-14s %8s %8s %24s\n' "$1" "$2" "$3" "$4"; }

# report TITLE PICK: one table; PICK (median or best) chooses among the rounds.
report() {
    local cp who expand flatten
    local -A total
    cp=$("$2" copy)
    row "$1" expand flatten 'expand, Scripts, flatten'
    for who in ours bsdtar; do
        expand=$("$2" "${who}_expand")
        flatten=$("$2" "${who}_flatten")
        total[$who]=$((expand + flatten))
        row "$who" "$(ratio "$expand" "$cp")" "$(ratio "$flatten" "$cp")" "$(ratio "${total[$who]}" "$cp")"
    done
    echo "ours is $(ratio "${total[bsdtar]}" "${total[ours]}") times as fast as bsdtar"
}

echo "package of $size MiB, $rounds rounds, multiples of one cp of it"
report medians median
report 'best of each' best
echo "peak memory: expand $(peak "$tools/pkgutil" --expand "$work/sample.pkg" "$work/tree")," \
    "flatten $(peak "$tools/pkgutil" --flatten "$work/tree" "$work/out.pkg")"
