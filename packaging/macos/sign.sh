#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# sign.sh [--dry-run] BUNDLE
#
# Signs the application bundle for the hardened runtime and verifies it. A signature covers what lies inside, so
# the work goes from the inside to the outside: libraries and plug-ins, frameworks, pct, and last the bundle.
#
# PCT_SIGNING_IDENTITY says who signs: the identity's name or hash in the keychain. "-" signs for nobody in
# particular, which is good for the Mac at hand only. With --dry-run the commands are printed, not run.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source-path=SCRIPTDIR source=common.sh
. "$here/common.sh"
entitlements=$here/entitlements.plist

usage() {
    echo "usage: sign.sh [--dry-run] BUNDLE" >&2
    exit 2
}

# plist_value KEY: a text in the bundle's property list, which our template wrote line by line
plist_value() {
    sed -n "/<key>$1<\/key>/{n;s/.*<string>\(.*\)<\/string>.*/\1/p;}" "$bundle/Contents/Info.plist"
}

# deepest_first: sorts paths so that what lies deeper comes first
deepest_first() {
    awk -F/ '{ printf "%04d %s\n", NF, $0 }' | LC_ALL=C sort -k 1,1nr -k 2 | cut -d ' ' -f 2-
}

loose_libraries() {
    find "$bundle/Contents" -type f \( -name '*.dylib' -o -name '*.so' \) | deepest_first
}

# One signature for each version of a framework; "Current" is a link to one of them.
framework_versions() {
    find "$bundle/Contents" -type d -path '*.framework/Versions/*' -prune | deepest_first
}

helper_programs() {
    find "$bundle/Contents/MacOS" -type f ! -name "$(plist_value CFBundleExecutable)" | deepest_first
}

# Libraries that another team signed, or nobody, do not load into a program of the hardened runtime. Signed for
# nobody in particular, ours would be such, so the runtime is asked for only with an identity.
codesign_for_release() {
    if [ "$PCT_SIGNING_IDENTITY" = - ]; then
        run codesign --force --sign - --timestamp=none "$@"
    else
        run codesign --force --sign "$PCT_SIGNING_IDENTITY" --options runtime --timestamp "$@"
    fi
}

sign_library() {
    codesign_for_release "$1"
}

sign_program() {
    codesign_for_release --entitlements "$entitlements" \
        --identifier "$(plist_value CFBundleIdentifier).$(basename "$1")" "$1"
}

sign_bundle() {
    codesign_for_release --entitlements "$entitlements" "$1"
}

verify() {
    run codesign --verify --strict --verbose=2 "$1"
}

# for_each COMMAND: calls it with each path that standard input lists
for_each() {
    while IFS= read -r path; do
        "$1" "$path" </dev/null || return
    done
}

sign_all() {
    loose_libraries | for_each sign_library
    framework_versions | for_each sign_library
    helper_programs | for_each sign_program
    sign_bundle "$bundle"
}

verify_all() {
    loose_libraries | for_each verify
    framework_versions | for_each verify
    helper_programs | for_each verify
    verify "$bundle"
}

if [ "${1:-}" = --dry-run ]; then
    dry_run=true
    shift
fi
[ $# -eq 1 ] || usage
bundle=${1%/}
require_identity
[ -f "$bundle/Contents/Info.plist" ] || fail "$bundle is no application bundle: Contents/Info.plist is missing"
sign_all
verify_all
