#!/usr/bin/env bash
# Drives the wizard's window under Wine, for golden/run.sh. SHOWWIZARD names the program.
export LC_ALL=C.UTF-8 # makes Wine read file names as UTF-8
exec "$(dirname "$0")/../../scripts/wine.sh" "$SHOWWIZARD" --drive "$@"
