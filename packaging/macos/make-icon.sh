#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# make-icon.sh IMAGES ICON
#
# Makes the bundle's icon (ICON, an .icns file) of the images app-icon-SIZE.png in the folder IMAGES, with macOS's
# own iconutil.
set -eu

[ $# -eq 2 ] || {
    echo "usage: make-icon.sh IMAGES ICON" >&2
    exit 2
}
images=$1 icon=$2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
set_of_images=$work/AppIcon.iconset

# Each size in points, for one and for two pixels a point.
mkdir "$set_of_images"
for points in 16 32 128 256 512; do
    cp "$images/app-icon-$points.png" "$set_of_images/icon_${points}x$points.png"
    cp "$images/app-icon-$((points * 2)).png" "$set_of_images/icon_${points}x$points@2x.png"
done
iconutil --convert icns --output "$icon" "$set_of_images"
