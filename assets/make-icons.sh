#!/usr/bin/env bash
# Draws the icon files anew from their SVG sources (needs ImageMagick). The results are kept in the repository, so
# that a build does not need it. Reads only what the sources use: filled paths on a canvas of 64 by 64.
set -euo pipefail
cd "$(dirname "$0")"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for name in shield program; do
    draw=()
    while IFS='|' read -r path fill; do
        draw+=(-fill "$fill" -draw "scale 16,16 path '$path'")
    done < <(sed -n 's/.*<path d="\([^"]*\)" fill="\([^"]*\)".*/\1|\2/p' "$name.svg")
    convert -size 1024x1024 xc:none "${draw[@]}" "PNG32:$work/$name.png"
    files=()
    for size in 16 24 32 48 64 256; do
        convert "$work/$name.png" -resize "${size}x${size}" "PNG32:$work/$name-$size.png"
        files+=("$work/$name-$size.png")
    done
    convert "${files[@]}" "$name.ico"
done
