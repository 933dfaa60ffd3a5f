#!/usr/bin/env bash
# Draws every image of the skins and the icons of the program from the SVG sources of this folder. The results are
# kept in the repository, so that a build needs neither of the two tools: rsvg-convert (Debian: librsvg2-bin) and
# ImageMagick's convert. Two runs give the same bytes.
set -euo pipefail
cd "$(dirname "$0")"
for tool in rsvg-convert convert; do
    command -v "$tool" >/dev/null || {
        echo "render.sh: $tool is missing (Debian packages: librsvg2-bin, imagemagick)" >&2
        exit 1
    }
done
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Only the pixels: no time stamps, no colour profiles, no gamma, which viewers would read differently.
plain=(-strip -define png:exclude-chunks=all -define png:compression-level=9)

# draw SOURCE RESULT STATE [NAME=VALUE...]: one image; STATE is the class of the drawing, by which the style sheet
# $style colours it, and "@NAME@" in the source becomes VALUE.
draw() {
    local source=$1 result=$2 rules=(-e "s/@STATE@/$3/")
    shift 3
    local pair
    for pair in "$@"; do rules+=(-e "s/@${pair%%=*}@/${pair#*=}/g"); done
    sed "${rules[@]}" "$source" >"$work/drawing.svg"
    rsvg-convert --stylesheet "$style" -o "$result" "$work/drawing.svg"
}

# join RESULT IMAGE...: the images side by side.
join() {
    local result=$1
    shift
    convert "$@" +append "${plain[@]}" "PNG32:$result"
}

# single NAME [SOURCE [NAME=VALUE...]]: an image of the skin without states.
single() {
    local name=$1 source=${2:-$1}
    draw "parts/$source.svg" "$work/frame.png" "" "${@:3}"
    join "$skin/$name.png" "$work/frame.png"
}

# strip NAME KIND STATES SOURCE [NAME=VALUE...]: an image of the skin with its states side by side.
strip() {
    local name=$1 kind=$2 states=$3 source=$4 state frames=()
    while read -r state; do
        draw "parts/$source.svg" "$work/frame-${#frames[@]}.png" "$kind $state" "${@:5}"
        frames+=("$work/frame-${#frames[@]}.png")
    done <<<"$states"
    join "$skin/$name.png" "${frames[@]}"
}

# labelled NAME KIND GROUND ICON X Y: a strip of three states, an icon at X, Y on a ground.
labelled() {
    local name=$1 kind=$2 ground=$3 icon=$4 x=$5 y=$6 state frames=()
    for state in rest hot pressed; do
        draw "parts/$ground.svg" "$work/ground.png" "$kind $state"
        draw "$icon.svg" "$work/icon.png" "$kind $state"
        convert "$work/ground.png" "$work/icon.png" -geometry "+$x+$y" -composite "PNG32:$work/frame-$state.png"
        frames+=("$work/frame-$state.png")
    done
    join "$skin/$name.png" "${frames[@]}"
}

# icon RESULT IMAGE...: an icon file of the images, one for each size.
icon() {
    local result=$1
    shift
    convert "$@" "${plain[@]}" "$result"
}

three=$'rest\nhot\npressed'
six=$'rest\nhot\npressed\nchecked rest\nchecked hot\nchecked pressed'

for skin in ../Skins/Default ../Skins/Graphite; do
    palette=$(basename "$skin")
    style=$work/style.css
    # NAME_R=, NAME_G= and NAME_B= of the skin's colours fill the places "@NAME@" of the style sheet.
    tr -d '\r' <"$skin/default.ini" | sed -n 's/^\([A-Z0-9_]*\)_\([RGB]\)=\([0-9]*\)$/\1 \2 \3/p' |
        awk '{ part[$1, $2] = $3; if ($2 == "B") print "s/@" $1 "@/rgb(" part[$1, "R"] "," part[$1, "G"] "," $3 ")/g" }' >"$work/colours.sed"
    sed -f "$work/colours.sed" "${palette,,}.css" >"$style"

    for name in top_left top top_right top_title left right right_center menu bottom_left bottom bottom_right scrollbar_tree; do
        single "$name"
    done
    single dialog dialog H=64 TOP=40 FOOT=63
    single dialog_big dialog H=72 TOP=48 FOOT=71

    for button in button:88:26 button_dialog:104:30 button_medium:144:30 button_large:200:30; do
        IFS=: read -r name width height <<<"$button"
        strip "$name" button "$three" button "W=$width" "W-2=$((width - 2))" "W-8=$((width - 8))" "H=$height" "H-2=$((height - 2))"
    done
    for name in min max help about close; do
        labelled "button_$name" "caption $name" caption_button "glyphs/$name" 8 6
    done
    for name in status connections advanced options applications trafficlog support about; do
        labelled "button_menu_$name" page-button page_button "icons24/$name" 16 8
    done
    for name in check_button check_button_list radio_button; do
        strip "$name" choice "$six" "$name"
    done
    for name in up down back slider1 slider2 slider3; do
        strip "scrollbar_$name" "scroll $name" "$three" "scrollbar_$name"
    done
done

# Menu images, in the order in which the program counts them.
style=menu_icons.css
frames=()
for name in shield status connections advanced options applications trafficlog about exit copy select_all refresh; do
    draw "icons16/$name.svg" "$work/menu-$name.png" ""
    frames+=("$work/menu-$name.png")
done
join menu_icons.png "${frames[@]}"

# Icons of the notification area, drawn for their sizes: 32 is twice 16.
mkdir -p ../tray
style=tray.css
for name in idle_normal idle_allow idle_block traffic_in traffic_out traffic_both; do
    frames=()
    for size in 16:16 20:20 24:24 32:16; do
        draw "tray${size#*:}.svg" "$work/tray-${size%:*}.png" "$name" "SIZE=${size%:*}"
        frames+=("$work/tray-${size%:*}.png")
    done
    icon "../tray/$name.ico" "${frames[@]}"
done

# The product's icon, up to 32 pixels as in the notification area, and the icon of a program that has none.
frames=()
for size in 16:16 20:20 24:24 32:16; do
    draw "tray${size#*:}.svg" "$work/shield-${size%:*}.png" idle_normal "SIZE=${size%:*}"
    frames+=("$work/shield-${size%:*}.png")
done
for size in 48 64 256; do
    draw shield.svg "$work/shield-$size.png" "" "SIZE=$size"
    frames+=("$work/shield-$size.png")
done
icon ../shield.ico "${frames[@]}"
frames=()
for size in 16:16 24:24 32:16 48:16 64:16 256:16; do
    draw "program${size#*:}.svg" "$work/program-${size%:*}.png" "" "SIZE=${size%:*}"
    frames+=("$work/program-${size%:*}.png")
done
icon ../program.ico "${frames[@]}"
