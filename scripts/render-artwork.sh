#!/bin/sh
# SPDX-License-Identifier: Apache-2.0
#
# render-artwork.sh [--check]
#
# Renders the drawings in resources/artwork into the images that the program carries,
# each at its own size and at twice that size ("@2x"), and records the checksums of
# drawings and images in resources/artwork/rendered.sha256.
#
# With --check nothing is rendered: exit 1 when an image is missing, or when a drawing or
# an image differs from the recorded one, so that it would have to be rendered again.
#
# Needs rsvg-convert (librsvg2-bin) and, for the animation, convert (imagemagick).
set -eu
export LC_ALL=C

cd "$(dirname "$0")/../resources"
manifest=artwork/rendered.sha256
frame_steps='00 01 02 03 04 05 06 07 08 09 10 11'
icon_sizes='16 32 48 64 128 256 512 1024'
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# All paths are relative to resources/; a function that ends in "_images" prints what it renders to.

target_of() {
    case $1 in
    artwork/background.svg) echo background ;;
    *) echo "img/$(basename "$1" .svg)" ;;
    esac
}

picture_sources() {
    for svg in artwork/*.svg; do
        case $svg in
        artwork/waiting.svg | artwork/app-icon*.svg) ;;
        *) echo "$svg" ;;
        esac
    done
}

states_of() {
    case $1 in
    artwork/toolbar/info.svg) echo normal hover disable checked ;;
    *) echo normal hover disable ;;
    esac
}

picture_images() {
    for svg in $(picture_sources); do
        printf '%s.png\n%s@2x.png\n' "$(target_of "$svg")" "$(target_of "$svg")"
    done
}

toolbar_images() {
    for svg in artwork/toolbar/*.svg; do
        for state in $(states_of "$svg"); do
            printf '%s-%s.png\n%s-%s@2x.png\n' "$(target_of "$svg")" "$state" "$(target_of "$svg")" "$state"
        done
    done
}

animation_images() {
    printf 'img/waiting.gif\nimg/waiting@2x.gif\n'
}

icon_images() {
    for size in $icon_sizes; do
        echo "artwork/icons/app-icon-$size.png"
    done
}

all_images() {
    { picture_images; toolbar_images; animation_images; icon_images; } | sort
}

all_sources() {
    find artwork -name '*.svg' -o -name '*.css' | sort
}

# render_pair SVG TARGET [RSVG-CONVERT OPTION...]
render_pair() {
    svg=$1 target=$2
    shift 2
    rsvg-convert "$@" --output "$target.png" "$svg"
    rsvg-convert "$@" --zoom 2 --output "$target@2x.png" "$svg"
}

render_pictures() {
    for svg in $(picture_sources); do
        render_pair "$svg" "$(target_of "$svg")"
    done
}

render_toolbar() {
    for svg in artwork/toolbar/*.svg; do
        for state in $(states_of "$svg"); do
            style=artwork/states/$state.css
            [ "$state" = normal ] && style=/dev/null
            render_pair "$svg" "$(target_of "$svg")-$state" --stylesheet "$style"
        done
    done
}

# GIF pixels are either opaque or not: the soft edges are blended with the white of the pages.
render_animation() {
    for step in $frame_steps; do
        degrees=$((${step#0} * 30))
        echo "#wheel { transform: rotate(${degrees}deg); }" >"$work/turn.css"
        render_pair artwork/waiting.svg "$work/frame$step" --stylesheet "$work/turn.css"
    done
    assemble_frames '' img/waiting.gif
    assemble_frames @2x img/waiting@2x.gif
}

# assemble_frames SUFFIX GIF
assemble_frames() {
    for step in $frame_steps; do
        frame=$work/frame$step$1.png
        convert "$frame" \( +clone -alpha extract -threshold 35% \) \
            \( -clone 0 -background white -flatten \) \
            -delete 0 +swap -alpha off -compose CopyOpacity -composite "$work/matted$step$1.png"
    done
    convert -dispose Background -delay 8 -loop 0 "$work"/matted??"$1".png +dither -colors 64 -strip "$2"
}

render_icons() {
    mkdir -p artwork/icons
    for size in $icon_sizes; do
        svg=artwork/app-icon.svg
        [ "$size" -le 32 ] && svg=artwork/app-icon-small.svg
        rsvg-convert --width "$size" --height "$size" --output "artwork/icons/app-icon-$size.png" "$svg"
    done
}

print_manifest() {
    { all_sources; all_images; } | xargs -d '\n' sha256sum
}

require_images() {
    for image in $(all_images); do
        [ -f "$image" ] && continue
        echo "resources/$image: missing; run scripts/render-artwork.sh" >&2
        return 1
    done
}

# report_changes DIFFERENCE: one line for every file that has come, gone or changed
report_changes() {
    sed -n 's|^[<>] [0-9a-f]*  |resources/|p' "$1" | sort -u |
        sed 's|$|: not as it was when the artwork was rendered; run scripts/render-artwork.sh|' >&2
}

check() {
    require_images || return 1
    if [ ! -f "$manifest" ]; then
        echo "resources/$manifest: missing; run scripts/render-artwork.sh" >&2
        return 1
    fi
    print_manifest >"$work/now"
    diff "$manifest" "$work/now" >"$work/difference" && return 0
    report_changes "$work/difference"
    return 1
}

render() {
    mkdir -p img
    render_pictures
    render_toolbar
    render_animation
    render_icons
    print_manifest >"$manifest"
}

case ${1-} in
'') render ;;
--check) check ;;
*)
    echo "usage: render-artwork.sh [--check]" >&2
    exit 2
    ;;
esac
