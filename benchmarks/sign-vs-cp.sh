#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# pct sign and the stand-in productsign on a large package, in turns in one run, medians, as multiples of one cp of the
# package: the members are moved and not hashed again. pct sign forces its package to the disk, so its cp does so, too.
#
# usage: sign-vs-cp.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]
set -euo pipefail

build=$(cd "${1:?usage: sign-vs-cp.sh BUILD_FOLDER [MEBIBYTES [ROUNDS]]}" && pwd)
size=${2:-1024}
rounds=${3:-5}
root=$(cd "$(dirname "$0")/.." && pwd)

work=$(mktemp -d "${TMPDIR:-/tmp}/pct-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
export TMPDIR=$work PCT_IDENTITIES_DIR=$work/identities
signer='Developer ID Installer: Example Org (ABCDE12345)'
mkdir "$PCT_IDENTITIES_DIR"
"$root/tests/support/make-identity" --name "$signer" --use packages --output "$PCT_IDENTITIES_DIR/signer.pem"
"$root/tests/support/vendorpackage/make-vendor-package" --product editor --output "$work/large.pkg" \
    --payload-size "$size" --compression none

copy() { cp --reflink=never "$work/large.pkg" "$work/out.pkg"; }
copy_to_disk() { copy && command sync "$work/out.pkg" "$work"; }
product_sign() {
    "$build/libexec/pct/productsign" --timestamp=none --sign "$signer" "$work/large.pkg" "$work/out.pkg" >/dev/null
}
pct_sign() { "$build/bin/pct" sign -q "$work/large.pkg" --output "$work/out.pkg" --identity "$signer"; }
verify() { "$build/bin/pct" verify -q --json "$work/signed.pkg" &>/dev/null || [ $? -eq 1 ]; }

declare -A times
measure() {
    sync
    local start=${EPOCHREALTIME/./}
    "$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }
ratio() { awk -v a="$(median "$1")" -v b="$(median "$2")" 'BEGIN { printf "%.2f", a / b }'; }

product_sign
mv "$work/out.pkg" "$work/signed.pkg"
cat "$work/large.pkg" >/dev/null
for ((round = 0; round < rounds; ++round)); do
    for what in copy product_sign copy_to_disk pct_sign verify; do
        measure "$what"
        rm -f "$work/out.pkg"
    done
done
echo "package of $size MiB, $rounds rounds, multiples of one cp of it ($(median copy) us, $(median copy_to_disk) us to the disk)"
echo "productsign: $(ratio product_sign copy) (bar: 1.3)"
echo "pct sign: $(ratio pct_sign copy_to_disk) of a cp that is forced to the disk, as its package is (bar: 1.3)"
echo "pct verify, which reads no members: $(median verify) us"
