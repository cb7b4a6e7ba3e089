#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check-licenses.sh: every source names its license itself, and everything else is covered by .reuse/dep5
# in the way that REUSE asks for.
set -eu
cd "$(dirname "$0")/.."

unmarked=$(find . \( -path ./build -o -path ./.git -o -path ./tests/fuzz/seeds \) -prune -o \
    -type f \( -name '*.cpp' -o -name '*.h' -o -name '*.mm' -o -name '*.m' -o -name '*.sh' -o -name '*.py' \) \
    -exec grep -L 'SPDX-License-Identifier' {} +)
if [ -n "$unmarked" ]; then
    echo "no SPDX line with the license in" >&2
    echo "$unmarked" >&2
    exit 1
fi
exec reuse lint
