#!/usr/bin/env bash
# drivewizard under Wine, for golden/run.sh. DRIVEWIZARD names the program.
export LC_ALL=C.UTF-8 # names of files are in UTF-8 for Wine then
exec "$(dirname "$0")/../../scripts/wine.sh" "$DRIVEWIZARD" "$@"
