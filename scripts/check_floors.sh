#!/usr/bin/env bash
# Checks that the house stands: each floor of src includes only floors below it, no header includes itself over
# others, windows.h stays in folders named win32 or com, and what only POSIX has in folders named posix.
# usage: check_floors.sh [SRC]; prints each fault and fails when there is one.
set -euo pipefail
src=${1:-$(dirname "$0")/../src}
cd "$src"

includes=$(mktemp)
trap 'rm -f "$includes"' EXIT
# file, line, kind (" or <), name
grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]' --include='*.h' --include='*.cpp' --include='*.inc' . |
  sed -E 's/^\.\/([^:]*):([0-9]+):[[:space:]]*#[[:space:]]*include[[:space:]]*(["<])([^">]*)[">].*/\1\t\2\t\3\t\4/' >"$includes" || true

faults=$(
  awk -F'\t' '
    BEGIN {
      count = split("platform support sysinfo project setupgen ui wizard cli com", names, " ")
      for (i = 1; i <= count; i++) height[names[i]] = i
      # The two programs stand side by side.
      height["com"] = height["cli"]
    }
    function Fault(text) { print $1 ":" $2 ": " text }
    {
      split($1, parts, "/"); floor = parts[1]
      split($4, parts, "/"); included = parts[1]
    }
    !(floor in height) { Fault(floor " is no floor"); next }
    $3 == "\"" && $1 == $4 { Fault("includes itself") }
    $3 == "\"" && !(included in height) { Fault("\"" $4 "\" does not begin with a floor"); next }
    $3 == "\"" && (height[included] > height[floor] || (included != floor && height[included] == height[floor])) {
      Fault(floor " may not include " included ", which does not stand below it")
    }
    $3 == "<" && tolower($4) ~ /^(windows|windowsx|winnt|winreg|winbase|objbase|ole2|oleauto|oaidl|unknwn|shlobj|commctrl|commdlg)\.h$/ &&
      $1 !~ /(^|\/)(win32|com)\// { Fault("<" $4 "> belongs into a folder named win32 or com") }
    $3 == "<" && $4 ~ /^((sys|linux|asm|netinet|arpa)\/.*|(unistd|iconv|fcntl|dirent|pwd|grp|dlfcn|pthread|poll|spawn|termios|langinfo|glob|fnmatch|ftw|libgen|strings|syslog|utime|wordexp|sched|semaphore)\.h)$/ &&
      $1 !~ /(^|\/)(posix|win32)\// { Fault("<" $4 "> belongs into a folder named posix") }
  ' "$includes"
  # A header that includes itself over others: tsort names the loop.
  awk -F'\t' '$3 == "\"" && $1 ~ /\.h$/ { print $1, $4 }' "$includes" | tsort 2>&1 >/dev/null |
    sed -E 's/^tsort: -: input contains a loop:$/include loop between:/; s/^tsort: /  /'
)
[ -z "$faults" ] && exit 0
echo "$faults"
exit 1
