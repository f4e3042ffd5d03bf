#!/usr/bin/env bash
# Drives the wizard's window under Wine, for golden/run.sh. SHOWWIZARD names the program.
exec "$(dirname "$0")/../../scripts/wine.sh" "$SHOWWIZARD" --drive "$@"
