#!/usr/bin/env bash
# SPDX-License-Identifier: Apache-2.0
# Time until the chooser is painted, as a multiple of the time until an empty window of the same libraries is.
# Both start in turns in one run; prints the ratio of the medians.
#
# usage: start-up.sh BUILD_FOLDER [ROUNDS]      (configure that build with -DPCT_BENCHMARKS=ON)
set -euo pipefail

if [[ ${INSIDE_DISPLAY:-} != yes ]]; then
    INSIDE_DISPLAY=yes exec "$(dirname "$0")/../scripts/with-display.sh" "$0" "$@"
fi
bin=${1:?usage: start-up.sh BUILD_FOLDER [ROUNDS]}/bin
rounds=${2:-21}

declare -A times
measure() {
    local start=${EPOCHREALTIME/./}
    "$bin/$1"
    times[$1]+="$((${EPOCHREALTIME/./} - start)) "
}
median() { tr ' ' '\n' <<<"${times[$1]}" | sed '/^$/d' | sort -n | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

for ((round = 0; round < rounds; ++round)); do
    measure startup_empty
    measure startup_chooser
done
awk -v chooser="$(median startup_chooser)" -v empty="$(median startup_empty)" \
    'BEGIN { printf "the chooser is on the screen in %.2f times the time of an empty window (bar: 1.15)\n", chooser / empty }'
