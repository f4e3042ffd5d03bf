#!/usr/bin/env bash
# Takes pictures of every page of the wizard under Wine on a separate display, at 96 and 144 dots per inch, with a long
# path and a long application name, and of messages, the progress and a file whose link does not resolve.
# usage: screenshots.sh [FOLDER]   default docs/screenshots
# Needs the programs of build/native and build/win32; demo.sh --window builds them.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-docs/screenshots}
native=$PWD/build/native/bin
windows=$PWD/build/win32/bin
work=$(mktemp -d)
pids=()
export BXVBWIZ_WINEPREFIX=$PWD/build/wine-screenshots
trap 'scripts/wine.sh --stop; [ ${#pids[@]} -eq 0 ] || kill "${pids[@]}" 2>/dev/null || true; rm -rf "$work"' EXIT
mkdir -p "$folder"

exec 8>"$work/display"
Xvfb -displayfd 8 -screen 0 1280x1024x24 >/dev/null 2>&1 &
pids+=($!)
for _ in $(seq 100); do [ -s "$work/display" ] && break || sleep 0.1; done
export BXVBWIZ_DISPLAY=:$(cat "$work/display")
DISPLAY=$BXVBWIZ_DISPLAY openbox >/dev/null 2>&1 &
pids+=($!)

Wine() { scripts/wine.sh "$@"; }

# The font that stands for Windows' dialog fonts asks for letters without smooth edges in small sizes; this one, which is
# of the same size, does not.
SmoothText() {
  local face
  Wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2 /f
  Wine reg add 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 1 /f
  for face in 'MS Sans Serif' 'Microsoft Sans Serif' 'MS Shell Dlg' Tahoma; do
    Wine reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$face" /d 'DejaVu Sans Condensed' /f
  done
} >/dev/null 2>&1

Resolution() {  # Resolution DPI
  Wine reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1" /f >/dev/null 2>&1
  scripts/wine.sh --stop
}

Shoot() {  # Shoot NAME
  sleep 0.4 # until everything is painted
  DISPLAY=$BXVBWIZ_DISPLAY import -window root png:- |
    convert png:- -bordercolor black -border 1 -trim +repage +dither -colors 128 -strip "PNG8:$folder/$1.png"
}

# Goes through the whole wizard and takes the named pages; the files are named PREFIX, page, SUFFIX.
Pages() {  # Pages NAMES PREFIX SUFFIX ARGUMENT...
  local names=" $1 " prefix=$2 suffix=$3 page
  shift 3
  coproc DRIVE { Wine "$windows/showwizard.exe" --pause generate "$@" 2>/dev/null; }
  local pid=$DRIVE_PID
  while IFS= read -r -t 120 page <&"${DRIVE[0]}"; do
    page=${page%$'\r'}
    [[ $names != *" $page "* ]] || Shoot "$prefix$page$suffix"
    echo >&"${DRIVE[1]}"
  done
  wait "$pid"
}

# The page that no step of the wizard shows.
DataAccess() {  # DataAccess NAME
  Wine "$windows/showwizard.exe" --panel 3 generate --machine "$work/machine" none.vbp >/dev/null 2>&1 &
  local pid=$!
  sleep 3
  Shoot "$1"
  scripts/wine.sh --stop
  wait "$pid" || true
}

SmoothText
for dpi in 96 144; do
  Resolution $dpi
  suffix=
  [ $dpi = 96 ] || suffix=-$dpi
  demo/lay_out.sh "$work/machine" "$native" >/dev/null
  demo='C:\Projects\OrderDesk\OrderDesk.vbp'
  Pages 'message-2 message-1091' '' "$suffix" --machine "$work/machine" --rebuild --answer 2=retry "$demo" || true # which ends it
  Pages 'welcome message-1046 message-1095 information summary summary-files progress report' '' "$suffix" \
    --machine "$work/machine" --answer 1095=yes "$demo"
  rm "$work/machine/drive_c/Projects/Ledger/LedgerDb.dll"
  Pages summary-files unresolved- "$suffix" --machine "$work/machine" --answer 1095=yes "$demo"
  DataAccess "data-access$suffix"

  long='Projects/Customer relations and order management/Release candidates of this year/Desktop application'
  mkdir -p "$work/machine/drive_c/$(dirname "$long")"
  mv "$work/machine/drive_c/Projects/OrderDesk" "$work/machine/drive_c/$long"
  Pages 'welcome information' long- "$suffix" --machine "$work/machine" --answer 1095=yes \
    --app-name 'Order Desk for Customer Relations, Wholesale Orders and Deliveries in all Branches' \
    "C:\\${long//\//\\}\\OrderDesk.vbp"
done
echo "The pictures are in $folder."
