#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# The processor time in which `pct show` reads and shows documents of 32 MiB, as a multiple of what Expat alone takes
# to parse them: whole processes in turns in one run, medians.
#
# usage: documents-vs-expat.sh BUILD_FOLDER [ROUNDS]      (configure that build with -DPCT_BENCHMARKS=ON)
set -euo pipefail

bin=${1:?usage: documents-vs-expat.sh BUILD_FOLDER [ROUNDS]}/bin
rounds=${2:-11}
bytes=$((32 * 1024 * 1024 - 1024))

work=$(mktemp -d "${TMPDIR:-/tmp}/documents-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT

# Repeats a text up to a number of bytes.
filled() { head -c $(($2 / ${#1} * ${#1})) < <(yes "$1" | tr -d '\n'); }
# document BEFORE TEXT BYTES AFTER: the text, so often, between the other two
document() {
    printf '<PelixPDFEditor><Profstore><Preferences>%s' "$1"
    filled "$2" "$3"
    printf '%s</Preferences></Profstore></PelixPDFEditor>\n' "$4"
}
domain='<Preference Text="LoginDomain" String="'
document "$domain" x "$bytes" '"/>' >"$work/one long value"
document "$domain" '&lt;' "$bytes" '"/>' >"$work/one value of references"
document '' '&lt;' "$bytes" '' >"$work/text that nothing reads"
document '' "<Preference Text=\"LoginDomain\" String=\"$(filled x 500)\"/>" "$bytes" '' >"$work/many elements"

# processor_time COMMAND...: in milliseconds
processor_time() {
    local TIMEFORMAT='%3U %3S'
    { time "$@" >"$work/output" 2>&1; } 2>&1 | awk '{ print int(1000 * ($1 + $2)) }'
}
median() { sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

for document in "$work"/*; do
    for ((round = 0; round < rounds; ++round)); do
        processor_time "$bin/expat_alone" "$document" >>"$work/expat.times"
        processor_time "$bin/pct" show "$document" >>"$work/show.times"
    done
    awk -v name="${document##*/}" -v show="$(median <"$work/show.times")" -v expat="$(median <"$work/expat.times")" \
        'BEGIN { printf "%-26s %5.2f times Expat alone (%d ms; bar: 3)\n", name, show / expat, expat }'
    rm "$work"/*.times
done
