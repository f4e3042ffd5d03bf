#!/usr/bin/env bash
# Runs a program with windows under Wine and prints what it said when it has ended. The desktop that Wine starts for
# the first of them keeps its output open, so whoever waited for that would wait for the desktop.
log=$(mktemp)
trap 'rm -f "$log"' EXIT
"$(dirname "$0")/../../scripts/wine.sh" "$@" >"$log" 2>&1 </dev/null
code=$?
cat "$log"
exit $code
