#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# update-translations.sh LUPDATE TS...: brings translation files up to date with the texts of the sources.
# What is new is left unfinished; what no source has any more is dropped.
set -eu
lupdate=$1
shift
cd "$(dirname "$0")/.."
exec "$lupdate" -silent -no-obsolete -locations none -extensions cpp,h,ui -I . \
    app pages profile/signing welcome -ts "$@"
