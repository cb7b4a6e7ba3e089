# shellcheck shell=sh
# SPDX-License-Identifier: Apache-2.0
# common.sh: what the scripts of this folder share; they read it.

dry_run=false

# run COMMAND...: runs it or, in a dry run, says how it would be called
run() {
    if $dry_run; then
        for word in "$@"; do
            printf "'%s' " "$word"
        done
        echo
    else
        "$@"
    fi
}

# fail MESSAGE: ends with one line
fail() {
    echo "$(basename "$0"): $1" >&2
    exit 1
}

# require_identity: who signs, a certificate's name or hash in the keychain, or "-" for nobody in particular
require_identity() {
    [ -n "${PCT_SIGNING_IDENTITY:-}" ] ||
        fail 'set PCT_SIGNING_IDENTITY to your "Developer ID Application" identity, or to - for this Mac only'
}
