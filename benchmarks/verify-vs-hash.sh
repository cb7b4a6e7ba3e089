#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# pct verify of a large result against the vendor's package, as multiples of hashing both files once, in turns in one run,
# medians.
#
# usage: verify-vs-hash.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]
set -euo pipefail

build=$(cd "${1:?usage: verify-vs-hash.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]}" && pwd)
size=${2:-1024}
rounds=${3:-5}
root=$(cd "$(dirname "$0")/.." && pwd)
pct=$build/bin/pct

work=$(mktemp -d "${TMPDIR:-/tmp}/pct-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work PCT_HOSTTOOLS=$build/libexec/pct
"$root/tests/support/vendorpackage/make-vendor-package" --product editor --output "$work/vendor.pkg" \
    --payload-size "$size" --compression none
"$pct" build -q --product editor --input "$work/vendor.pkg" --output "$work/result.pkg"

hash_both() { openssl dgst -sha1 "$work/vendor.pkg" "$work/result.pkg" >/dev/null; }
verify() { "$pct" verify -q "$work/result.pkg" --vendor "$work/vendor.pkg" >/dev/null; }
verify_deep() { "$pct" verify -q "$work/result.pkg" --vendor "$work/vendor.pkg" --deep >/dev/null; }

declare -A times
measure() {
    local start=${EPOCHREALTIME/./}
    "$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
ratio() { awk -v a="$(median "$1")" -v b="$(median hash_both)" 'BEGIN { printf "%.2f", a / b }'; }

for ((round = 0; round < rounds; ++round)); do
    measure hash_both
    measure verify
    measure verify_deep
done
echo "$size MiB: verify $(ratio verify), verify --deep $(ratio verify_deep) times hashing both files once" \
    "($(($(median hash_both) / 1000)) ms)"
