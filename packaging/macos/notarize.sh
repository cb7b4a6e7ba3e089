#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# notarize.sh [--dry-run] IMAGE
#
# Signs the disk image, whose bundle sign.sh has signed, has Apple notarize it, attaches the ticket and asks
# Gatekeeper. With --dry-run the commands are printed, not run.
#
# PCT_SIGNING_IDENTITY  who signs: a "Developer ID Application" identity in the keychain
# PCT_NOTARY_PROFILE    the keychain profile with the credentials, made once by "xcrun notarytool store-credentials"
# PCT_NOTARY_KEYCHAIN   the keychain that holds the profile, when it is not the default one
set -eu

here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source-path=SCRIPTDIR source=common.sh
. "$here/common.sh"

usage() {
    echo "usage: notarize.sh [--dry-run] IMAGE" >&2
    exit 2
}

require_credentials() {
    require_identity
    [ "$PCT_SIGNING_IDENTITY" != - ] || fail 'Apple notarizes only what an identity has signed, not -'
    [ -n "${PCT_NOTARY_PROFILE:-}" ] ||
        fail 'set PCT_NOTARY_PROFILE to a profile that "xcrun notarytool store-credentials" has made'
}

sign_image() {
    run codesign --force --sign "$PCT_SIGNING_IDENTITY" --timestamp "$image"
    run codesign --verify --strict --verbose=2 "$image"
}

# notarytool VERB ARGUMENT...
notarytool() {
    run xcrun notarytool "$@" --keychain-profile "$PCT_NOTARY_PROFILE" \
        ${PCT_NOTARY_KEYCHAIN:+--keychain "$PCT_NOTARY_KEYCHAIN"}
}

# The command succeeds even when Apple refuses, so its answer decides; the log then tells why.
submit() {
    if $dry_run; then
        notarytool submit "$image" --wait
        return
    fi
    answer=$(notarytool submit "$image" --wait) || fail "Apple's service did not answer: $answer"
    echo "$answer"
    case $answer in
        *'status: Accepted'*) return ;;
    esac
    notarytool log "$(echo "$answer" | sed -n 's/^ *id: *//p' | head -n 1)" >&2 || true
    fail "Apple has not accepted $image"
}

staple() {
    run xcrun stapler staple "$image"
    run xcrun stapler validate "$image"
}

assess() {
    run spctl --assess --type open --context context:primary-signature --verbose "$image"
}

if [ "${1:-}" = --dry-run ]; then
    dry_run=true
    shift
fi
[ $# -eq 1 ] || usage
image=$1
require_credentials
[ -f "$image" ] || fail "$image is no file"
sign_image
submit
staple
assess
