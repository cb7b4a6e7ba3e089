#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
# check-layers.sh: which folder may include which. Prints every #include that points the wrong way and
# fails when there is one. CONTRIBUTING.md explains the layers.
set -eu
cd "$(dirname "$0")/.."

# FOLDER: what its sources may include, itself apart.
layers='
core:
config: core
package: core config
profile: core config
resources:
translations:
pages: core config
welcome: core config profile
app: core config package profile pages welcome resources translations
cli: core config package profile resources
hosttools:
'
folders='core|config|package|profile|resources|pages|welcome|app|cli|hosttools|translations|tests'

found=0
while IFS=: read -r folder allowed; do
    [ -n "$folder" ] || continue
    pattern="^($(echo "$folder $allowed" | sed -e 's/  */ /g' -e 's/ $//' -e 's/ /|/g'))/"
    wrong=$(grep -rnE --include='*.h' --include='*.cpp' --include='*.mm' \
        "^#(include|import) \"($folders)/" "$folder" | while IFS= read -r line; do
            target=${line#*\"}
            echo "$target" | grep -qE "$pattern" || echo "$line"
        done)
    if [ -n "$wrong" ]; then
        found=1
        echo "$folder/ may include only: $folder${allowed:+,$allowed}" >&2
        echo "$wrong" >&2
    fi
done <<EOF
$layers
EOF
exit $found
