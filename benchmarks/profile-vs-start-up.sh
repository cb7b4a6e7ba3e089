#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Opening, converting and saving a profile with the whole ribbon ticked, as a multiple of the time until an empty
# window is painted: whole processes in turns in one run, medians. Then the memory that property lists of 100 MB, and
# the largest that are accepted, take at most, with what became of them.
#
# usage: profile-vs-start-up.sh BUILD_FOLDER [ROUNDS]      (configure that build with -DPCT_BENCHMARKS=ON)
set -euo pipefail

if [[ ${INSIDE_DISPLAY:-} != yes ]]; then
    INSIDE_DISPLAY=yes exec "$(dirname "$0")/../scripts/with-display.sh" "$0" "$@"
fi
bin=${1:?usage: profile-vs-start-up.sh BUILD_FOLDER [ROUNDS]}/bin
rounds=${2:-21}
limit_mebibytes=1024

work=$(mktemp -d "${TMPDIR:-/tmp}/profile-bench.XXXXXX")
trap 'rm -rf "$work"' EXIT
profile=$work/full.mobileconfig
QT_LOGGING_RULES='*=false' "$bin/full_ribbon_profile" "$profile"

export XDG_RUNTIME_DIR=$work

empty_window() { "$bin/startup_empty"; }
convert_profile() {
    "$bin/pct" profile -q --product editor --from "$profile" --output "$work/out.mobileconfig" --force
}

declare -A times
measure() {
    local start=${EPOCHREALTIME/./}
    "$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

for ((round = 0; round < rounds; ++round)); do
    measure empty_window
    measure convert_profile
done
awk -v size="$(wc -c <"$profile")" -v convert="$(median convert_profile)" -v empty="$(median empty_window)" 'BEGIN {
    printf "a profile of %d KiB is opened, converted and saved in %.2f times the time of an empty window (%d rounds)\n",
        size / 1024, convert / empty, '"$rounds"' }'

# Repeats a text up to a number of bytes.
filled() { head -c "$2" < <(yes "$1" | tr -d '\n'); }
xml_list() {
    printf '<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict><key>a</key>%s' "$1"
    filled "$2" "$3"
    printf '%s</dict></plist>\n' "$4"
}
make_lists() {
    xml_list '<string>' x "$2" '</string>' >"$work/$1 in one XML text"
    xml_list '<string>' "\\" "$2" '</string>' >"$work/$1 of backslashes in one XML text"
    xml_list '<array>' '<true/>' "$((${2} / 7 * 7))" '</array>' >"$work/$1 of small XML elements"
    { printf '{a=' && filled b "$2" && printf ';}\n'; } >"$work/$1 in one old-style text"
    { printf '{a=(' && filled 'b,' "$2" && printf ');}\n'; } >"$work/$1 of small old-style texts"
}
make_lists '100 MB' 100000000
make_lists ' 30 MB' 30000000
xml_list '<string>' "\\" 11000000 '</string>' >"$work/ 11 MB of backslashes in one XML text"
printf '{a=(%s);}' "$(filled 'b,' 700000)" >"$work/  1 MB of small old-style texts"
xml_list '<array>' '<string>\U1</string>' 7000000 '</array>' >"$work/  7 MB of small XML texts"
python3 -c 'import plistlib, sys; plistlib.dump({"a": ["%07d" % i for i in range(10**7)]}, sys.stdout.buffer,
    fmt=plistlib.FMT_BINARY)' >"$work/100 MB and more of binary texts"

if [[ ! -x /usr/bin/time ]]; then
    echo "peak memory: not measured, because there is no /usr/bin/time"
    exit 0
fi
# None of the lists holds a profile, so each is refused in one line, which says how far the reading got.
read_list() {
    if /usr/bin/time -f %M -o "$work/peak" "$bin/pct" profile -q --product editor --from "$1" \
        --output "$work/never" 2>"$work/message"; then
        echo "$1: was accepted" >&2
        exit 1
    fi
}
failed=0
echo "peak memory, at most $limit_mebibytes MiB:"
for list in "$work/"*MB*; do
    read_list "$list"
    peak=$(($(tail -n 1 "$work/peak") / 1024))
    why=$(cut -d ';' -f 1 "$work/message")
    printf '%-40s %5d MiB: %s\n' "${list##*/}" "$peak" "${why#*"$list": }"
    ((peak <= limit_mebibytes)) || failed=1
done
exit "$failed"
