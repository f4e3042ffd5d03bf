#!/usr/bin/env bash
# Shows the wizard at work: installs what is missing, builds, lays out a machine folder with a sample project in
# demo/out, and makes a setup project of it.
# usage: demo.sh [--window]
# --window shows the wizard's window under Wine instead; without a display it takes pictures of every page.
set -euo pipefail
cd "$(dirname "$0")"
started=$SECONDS
mode=${1:-}
if [ "$mode" = --help ]; then
  sed -n '/^# /s/^# //p' "$0"
  exit 0
fi
if [ $# -gt 1 ] || [[ -n $mode && $mode != --window ]]; then
  echo "usage: demo.sh [--window]" >&2
  exit 2
fi

Title() { printf '\n== %s\n\n' "$*"; }

Build() {  # Build PRESET TARGET...
  local preset=$1
  shift
  echo "Building $preset (build/$preset) ..."
  { cmake --preset "$preset" && cmake --build --preset "$preset" --parallel "$(nproc)" --target "$@"; } >build/demo.log 2>&1 && return
  tail -n 40 build/demo.log
  echo "The build failed; its whole output is in build/demo.log." >&2
  exit 1
}

scripts/install.sh build
mkdir -p build demo/out
exec 9>demo/out/lock
flock --nonblock 9 || { echo "Waiting for another demo.sh in this folder ..."; flock 9; }
Build native bxvbwiz makepe
bin=build/native/bin
machine=demo/out/machine
demo/lay_out.sh $machine $bin >build/demo.log
project='C:\Projects\OrderDesk\OrderDesk.vbp'

if [ "$mode" = --window ]; then
  scripts/install.sh windows
  Build win32 showwizard
  if [ -z "${DISPLAY:-}" ]; then
    echo "There is no display: taking pictures instead."
    exec scripts/screenshots.sh demo/out/screenshots 9>&-
  fi
  echo "The wizard works on $machine and opens $project."
  BXVBWIZ_DISPLAY=$DISPLAY exec scripts/wine.sh build/win32/bin/showwizard.exe generate --machine $machine "$project" 9>&-
fi

Title "The project: $project"
grep -aE '^(Form|Reference|Object)=' $machine/drive_c/Projects/OrderDesk/OrderDesk.vbp | tr -d '\r'

Title "bxvbwiz generate '$project' --machine $machine --answer 1095=yes"
$bin/bxvbwiz generate "$project" --machine $machine --answer 1095=yes

folder="$machine/drive_c/My Setups/OrderDesk"
Title "Two of these files: OrderDesk.bxp, Windows System Self-reg Shared Files.fgl"
tr -d '\r' <"$folder/OrderDesk.bxp"
echo
tr -d '\r' <"$folder/File Groups/Windows System Self-reg Shared Files.fgl"
printf '\nDone in %d s. Everything is in %s.\n' $((SECONDS - started)) $machine
