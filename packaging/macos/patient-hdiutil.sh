#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# patient-hdiutil.sh ARGUMENT...
#
# hdiutil, tried again while it says that the volume is busy: what has just been written may still be read by the
# system's indexing. PCT_HDIUTIL_PAUSE is the time between two tries in seconds, 5 unless set.
set -u

tries=6
messages=$(mktemp)
trap 'rm -f "$messages"' EXIT

while :; do
    hdiutil "$@" 2>"$messages"
    status=$?
    cat "$messages" >&2
    tries=$((tries - 1))
    [ "$status" -ne 0 ] && [ "$tries" -gt 0 ] && grep -q 'Resource busy' "$messages" || exit "$status"
    sleep "${PCT_HDIUTIL_PAUSE:-5}"
done
