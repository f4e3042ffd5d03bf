#!/usr/bin/env bash
# Runs a Windows program under Wine, in a prefix inside the build tree, which is made if it is missing.
# usage: wine.sh [--whole] PROGRAM [ARGUMENT]...   exits with the program's exit code
#        wine.sh --stop                  ends the prefix's Wine server
# With --whole the output is printed when the program has ended: Wine's own services, which outlive it, would hold a
# pipe open. BXVBWIZ_WINEPREFIX names another prefix. Without BXVBWIZ_DISPLAY no window is shown.
set -euo pipefail
repository=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX=${BXVBWIZ_WINEPREFIX:-$repository/build/wine}
export WINEDLLOVERRIDES="mscoree=;mshtml=;winedbg.exe=d" WINEDEBUG=${WINEDEBUG:--all}
unset DISPLAY WAYLAND_DISPLAY
# In another locale Wine sees no name beyond ASCII.
[[ ${LC_ALL:-${LC_CTYPE:-${LANG:-}}} == *[Uu][Tt][Ff]* ]] || export LC_ALL=C.UTF-8
[ -z "${BXVBWIZ_DISPLAY:-}" ] || export DISPLAY=$BXVBWIZ_DISPLAY

if [ "${1:-}" = --stop ]; then
  [ ! -d "$WINEPREFIX" ] || wineserver -k || true
  exit 0
fi

# Wine takes half a minute to make a prefix. It makes build/wine, and one that is only copied, for all others.
template=$repository/build/wine-new

New() {  # New PREFIX
  rm -rf "$1"
  WINEPREFIX=$1 wineboot -i
  # Programs without windows need no display.
  WINEPREFIX=$1 wine reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d x11,null /f
  WINEPREFIX=$1 wineserver -w
} >/dev/null 2>&1 9>&-

MakePrefix() {
  mkdir -p "$(dirname "$WINEPREFIX")" "$(dirname "$template")"
  (
    flock 9
    [ ! -e "$WINEPREFIX/made" ] || exit 0
    if [ "$WINEPREFIX" = "$repository/build/wine" ] && [ ! -e "$template.made" ]; then
      New "$WINEPREFIX"
    else
      if [ ! -e "$template.made" ]; then
        New "$template"
        touch "$template.made"
      fi
      rm -rf "$WINEPREFIX"
      cp -R "$template" "$WINEPREFIX"
    fi
    touch "$WINEPREFIX/made"
  ) 9>"$template.lock"
}
[ -e "$WINEPREFIX/made" ] || MakePrefix
# The server stays for a while after the last program, so that the next one starts fast. It belongs to no program, so
# that no reader of a program's output waits for it.
wineserver -p60 </dev/null >/dev/null 2>&1 || true
if [ "${1:-}" != --whole ]; then exec wine "$@"; fi
shift
output=$(mktemp)
trap 'rm -f "$output"' EXIT
code=0
wine "$@" >"$output" 2>&1 </dev/null || code=$?
cat "$output"
exit "$code"
