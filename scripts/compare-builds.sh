#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# compare-builds.sh BUILD OTHER: lets the pct of two build folders, each with its own stand-ins, make packages and
# profiles from the same settings and print them, and fails unless both write the same bytes. For builds on
# different versions of Qt, which must not be seen in what is delivered.
set -eu
if [ $# -ne 2 ] || [ ! -x "$1/bin/pct" ] || [ ! -x "$2/bin/pct" ]; then
    echo "usage: compare-builds.sh BUILD-FOLDER OTHER-BUILD-FOLDER" >&2
    exit 2
fi
seeds=$(cd "$(dirname "$0")/../tests/fuzz/seeds/document" && pwd)
samples=$(cd "$1/samples" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
SOURCE_DATE_EPOCH=1767225600
export SOURCE_DATE_EPOCH

# write PCT PRODUCT TITLE: what that pct makes of the product's sample and settings, into the current folder. Its
# own path is in what is printed, so it is the same for both.
write() {
    package="$2 package.pkg"
    "$1" build -q --product "$2" --input "$samples/$3.pkg" --output "$package" --config "$seeds/$2.xml"
    bsdtar -xf "$package" --include '*/Scripts'
    mkdir "$2 scripts"
    bsdtar -xf ./*/Scripts -C "$2 scripts"
    rm -r ./*.pkg/
    "$1" profile -q --product "$2" --config "$seeds/$2.xml" --output "$2.mobileconfig" \
        --identifier "com.example.$2" --uuid 8e8f4d07-4b0c-4f0e-9c5b-0d6f3f1c1a11
    # The part's own number is a new one each time.
    sed -E 's/[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}/NEW/' "$2.mobileconfig" >"$2 profile.xml"
    rm "$2.mobileconfig"
    for file in "$package" "$2 profile.xml" "$seeds/$2.xml"; do
        "$1" show --json "$file" >"$2 $(basename "$file").json"
    done
    "$1" diff --json "$seeds/$2.xml" "$package" >"$2 diff.json" || [ $? -eq 1 ]
}

write_all() {
    pct=$(cd "$1/bin" && pwd)/pct
    mkdir "$work/place"
    (cd "$work/place" && write "$pct" editor 'Pelix PDF Editor' && write "$pct" reader 'Pelix PDF Reader')
    mv "$work/place" "$2"
}

write_all "$1" "$work/one"
write_all "$2" "$work/other"
diff -r "$work/one" "$work/other" || {
    echo "compare-builds: $1 and $2 write different bytes" >&2
    exit 1
}
echo "compare-builds: $(find "$work/one" -type f | wc -l) files of $1 and $2 are the same"
