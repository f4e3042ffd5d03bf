#!/usr/bin/env bash
# The wizard's window, worked under Wine, for golden/run.sh. SHOWWIZARD names the program.
export LC_ALL=C.UTF-8 # names of files are in UTF-8 for Wine then
exec "$(dirname "$0")/../../scripts/wine.sh" "$SHOWWIZARD" --drive "$@"
