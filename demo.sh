#!/usr/bin/env bash
# Shows the wizard at work: installs what is missing, builds, lays out a machine folder with a sample project in
# demo/out, and makes a setup project of it.
set -euo pipefail
cd "$(dirname "$0")"
started=$SECONDS

Title() { printf '\n== %s\n\n' "$*"; }

scripts/install.sh build
mkdir -p build
if ! { cmake --preset native && cmake --build --preset native --parallel 2 --target bxvbwiz makepe; } \
  >build/demo.log 2>&1; then
  tail -n 40 build/demo.log
  echo "The build failed; all of its output is in build/demo.log." >&2
  exit 1
fi
bin=build/native/bin

# The machine: what the setup-authoring environment installs, then the sample project and its components.
rm -rf demo/out
mkdir -p demo/out
machine=demo/out/machine
$bin/bxvbwiz machine new $machine >build/demo.log
cp -R demo/machine/. $machine
cat demo/registry.reg >>$machine/registry.reg
arguments=()
while IFS= read -r line; do
  eval "arguments=($line)"
  (cd $machine && "../../../$bin/makepe" "${arguments[@]}")
done <demo/executables

project='C:\Projects\OrderDesk\OrderDesk.vbp'
Title "The project: $project"
grep -aE '^(Form|Reference|Object)=' $machine/drive_c/Projects/OrderDesk/OrderDesk.vbp | tr -d '\r'

Title "bxvbwiz generate '$project' --machine $machine --answer 1095=yes"
$bin/bxvbwiz generate "$project" --machine $machine --answer 1095=yes

folder="$machine/drive_c/My Setups/OrderDesk"
Title "Two of these files: OrderDesk.bxp, Windows System Self-reg Shared Files.fgl"
tr -d '\r' <"$folder/OrderDesk.bxp"
echo
tr -d '\r' <"$folder/File Groups/Windows System Self-reg Shared Files.fgl"
printf '\nDone in %d s. All of it is in %s.\n' $((SECONDS - started)) $machine
