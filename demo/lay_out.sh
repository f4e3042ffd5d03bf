#!/usr/bin/env bash
# Lays out the demo's machine folder: what the setup-authoring environment installs, then the sample project and
# its components.
# usage: lay_out.sh MACHINE BIN   BIN is the folder of bxvbwiz and makepe for this computer
set -euo pipefail
machine=$1
bin=$(cd "$2" && pwd)
cd "$(dirname "$0")"
demo=$PWD
cd - >/dev/null
rm -rf "$machine"
mkdir -p "$(dirname "$machine")"
"$bin/bxvbwiz" machine new "$machine"
cp -R "$demo/machine/." "$machine"
cat "$demo/registry.reg" >>"$machine/registry.reg"
arguments=()
while IFS= read -r line; do
  eval "arguments=($line)"
  (cd "$machine" && "$bin/makepe" "${arguments[@]}")
done <"$demo/executables"
