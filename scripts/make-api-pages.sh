#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# make-api-pages.sh DOXYFILE: makes pages of the headers as the file says. Exits with 77, and says so, where there is no
# Doxygen, and with another code than 0 when it warns.
set -eu
if ! command -v doxygen >/dev/null 2>&1; then
    echo "make-api-pages: doxygen is not installed, so there are no pages of the headers" >&2
    exit 77
fi
exec doxygen "$1"
