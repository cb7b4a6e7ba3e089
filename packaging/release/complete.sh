#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# complete.sh TAG HOMEPAGE FOLDER
#
# Makes FOLDER/release of what the builds of a version left in FOLDER: two disk images, Debian packages, and the
# materials-*.txt that list what is in them. Adds the cask, a bill of materials and the checksums, and writes the
# changelog's words about the version to FOLDER/notes.md. TAG is "v" and the version.
#
# FOLDER/SHA256SUMS is for the attestation of provenance.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
changelog=$here/../../CHANGELOG.md

fail() {
    echo "complete.sh: $1" >&2
    exit 1
}

# require_one PATTERN...: exactly one file of each kind is there
require_one() {
    for pattern in "$@"; do
        found=$(find "$folder" -maxdepth 1 -name "$pattern" | wc -l)
        [ "$found" -eq 1 ] || fail "$found files instead of one are like $pattern in $folder"
    done
}

# The version's part of the changelog. A version is released when its heading has a date.
write_notes() {
    grep -Eq "^## \[$version\] - [0-9]{4}-[0-9]{2}-[0-9]{2}\$" "$changelog" ||
        fail "CHANGELOG.md has no heading with the date of version $version"
    awk -v heading="## [$version]" '
        index($0, heading) == 1 { inside = 1; next }
        inside && /^## / { exit }
        inside { print }' "$changelog" >"$folder/notes.md"
}

[ $# -eq 3 ] || {
    echo "usage: complete.sh TAG HOMEPAGE FOLDER" >&2
    exit 2
}
version=${1#v}
homepage=$2
[ "v$version" = "$1" ] || fail "the tag $1 does not begin with v"
folder=$(cd "$3" && pwd)
release=$folder/release

require_one "*-$version-macOS*-arm64.dmg" "*-$version-macOS*-x86_64.dmg" "pelix-pct_$version-*.deb" \
    "pelix-customization-tool_$version-*.deb"
write_notes
mkdir "$release"
cp "$folder"/*.dmg "$folder"/*.deb "$release"
"$here/make-cask.sh" "$version" "$homepage" "$release"
"$here/make-sbom.py" "$version" "$homepage" "$release" "$folder"/materials-*.txt \
    >"$folder/Pelix-Customization-Tool-$version.spdx.json"
mv "$folder/Pelix-Customization-Tool-$version.spdx.json" "$release"
(cd "$release" && sha256sum -- * >"$folder/SHA256SUMS")
cp "$folder/SHA256SUMS" "$release"
