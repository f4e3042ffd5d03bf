#!/usr/bin/env bash
# Takes a picture of the page that analyse --html writes of the demo's project.
# usage: page_picture.sh [FILE]   default docs/screenshots/page.png
# Needs the programs of build/native, which demo.sh builds, Chromium and ImageMagick.
set -euo pipefail
cd "$(dirname "$0")/.."
picture=$(realpath "${1:-docs/screenshots/page.png}")
bin=${BIN:-build/native/bin}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
demo/lay_out.sh "$work/machine" "$bin" >/dev/null
"$bin/bxvbwiz" analyse 'C:\Projects\OrderDesk\OrderDesk.vbp' --machine "$work/machine" --yes --quiet --html "$work/page.html" 2>/dev/null
chromium --headless --no-sandbox --disable-gpu --hide-scrollbars --user-data-dir="$work/profile" --window-size=900,1120 \
  --screenshot="$work/page.png" "file://$work/page.html" >/dev/null 2>&1
convert "$work/page.png" -bordercolor white -trim -border 12 +repage +dither -colors 64 -strip "PNG8:$picture"
