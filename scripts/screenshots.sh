#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# screenshots.sh [FOLDER]
#
# Builds the tool and takes every picture of docs/screenshots anew, or into FOLDER. The pictures show the real windows
# at one size; on Linux in a display of their own and with one font, on a Mac as that Mac shows them.
set -eu
cd "$(dirname "$0")/.."
folder=${1:-docs/screenshots}

display=scripts/with-display.sh
[ "$(uname)" != Darwin ] || display=
cmake --preset ci >/dev/null
cmake --build build/ci --target screenshots

# The save dialog shows folders, so they have the same names on every machine.
place=/tmp/pct-screenshots
mkdir -m 700 "$place"
trap 'rm -rf "$place"' EXIT
mkdir "$place/admin"
export LC_ALL=C.UTF-8 TZ=UTC HOME="$place/admin" TMPDIR="$place" PCT_LANGUAGE='' \
    XDG_RUNTIME_DIR="$place" QT_SCALE_FACTOR="${QT_SCALE_FACTOR:-1}" QT_LOGGING_RULES='pct.*.debug=false'
${display:+"$display"} build/ci/tests/screenshots "$folder"
