#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# make-keychain.sh KEYCHAIN PROFILE
#
# For build servers: makes the keychain KEYCHAIN with the identity to sign with, usable by codesign without a
# question, and with the notary's credentials as the keychain profile PROFILE, and adds it to those that are searched.
#
# PCT_CERTIFICATE_P12       the identity with its key, a PKCS 12 file in base64
# PCT_CERTIFICATE_PASSWORD  that file's password
# PCT_NOTARY_APPLE_ID, PCT_NOTARY_TEAM_ID, PCT_NOTARY_PASSWORD  the notary's credentials
set -eu

here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source-path=SCRIPTDIR source=common.sh
. "$here/common.sh"

require_secrets() {
    for name in PCT_CERTIFICATE_P12 PCT_CERTIFICATE_PASSWORD \
        PCT_NOTARY_APPLE_ID PCT_NOTARY_TEAM_ID PCT_NOTARY_PASSWORD; do
        printenv "$name" | grep -q . || fail "set $name"
    done
}

make_keychain() {
    security create-keychain -p "$password" "$keychain"
    # Without a time limit, so that a long build finds it open.
    security set-keychain-settings "$keychain"
    security unlock-keychain -p "$password" "$keychain"
}

import_identity() {
    printf '%s' "$PCT_CERTIFICATE_P12" | base64 --decode >"$work/identity.p12"
    security import "$work/identity.p12" -k "$keychain" -f pkcs12 -P "$PCT_CERTIFICATE_PASSWORD" -T /usr/bin/codesign
    security set-key-partition-list -S apple-tool:,apple:,codesign: -s -k "$password" "$keychain" >/dev/null
}

# The names come one a line, indented and in quotation marks.
search_keychain() {
    security list-keychains -d user | sed -e 's/^[[:space:]]*"//' -e 's/"$//' >"$work/searched"
    set -- "$keychain"
    while IFS= read -r other; do
        set -- "$@" "$other"
    done <"$work/searched"
    security list-keychains -d user -s "$@"
}

store_credentials() {
    xcrun notarytool store-credentials "$1" --apple-id "$PCT_NOTARY_APPLE_ID" --team-id "$PCT_NOTARY_TEAM_ID" \
        --password "$PCT_NOTARY_PASSWORD" --keychain "$keychain"
}

[ $# -eq 2 ] || {
    echo "usage: make-keychain.sh KEYCHAIN PROFILE" >&2
    exit 2
}
require_secrets
keychain=$1
password=$(openssl rand -hex 24)
umask 077
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
make_keychain
import_identity
search_keychain
store_credentials "$2"
