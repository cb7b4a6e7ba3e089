#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check-changelog.sh PCT: the newest heading of CHANGELOG.md names the version that the program says, with
# the date of its release or the word "Unreleased".
set -eu
said=$("$1" --version)
cd "$(dirname "$0")/.."

version=${said#pct }
heading=$(grep -m 1 '^## ' CHANGELOG.md)
case $heading in
    "## [$version] - Unreleased") ;;
    "## [$version] - "[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]) ;;
    *)
        echo "CHANGELOG.md begins with \"$heading\", but the program is version $version" >&2
        exit 1
        ;;
esac
