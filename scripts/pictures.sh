#!/usr/bin/env bash
# Renders the drawings of src/ui/win32/pictures as icons, in the sizes that the system asks for at 96, 120, 144 and 192
# dots per inch; the wizard's own icon also in those that Explorer shows. The icons are committed: run this after
# changing a drawing.
# usage: pictures.sh        Needs rsvg-convert (Debian package librsvg2-bin) and ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/../src/ui/win32/pictures"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for drawing in *.svg; do
  sizes=(16 20 24 32)
  [ "$drawing" != wizard.svg ] || sizes+=(40 48 64 256)
  pictures=()
  for size in "${sizes[@]}"; do
    # Reduced from a larger one, so that edges between two pixels are soft on both sides.
    rsvg-convert -w $((size * 8)) -h $((size * 8)) "$drawing" |
      convert png:- -filter box -resize "${size}x$size" "PNG32:$work/$size.png"
    pictures+=("$work/$size.png")
  done
  convert "${pictures[@]}" "${drawing%.svg}.ico"
done
