#!/usr/bin/env bash
# The compiled help file holds every page and list as it stands in the source tree, and opens with its first page.
# usage: compiled_help_test.sh CHMLS HELP_FILE SOURCE_FOLDER
set -uo pipefail
chmls=$1
helpFile=$2
sources=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failures=0

Fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}

"$chmls" extractall "$helpFile" "$work" >"$work/said" 2>&1 || Fail "the help file cannot be read: $(cat "$work/said")"
count=0
for file in "$sources"/*.htm "$sources"/*.css "$sources"/*.hhc "$sources"/*.hhk; do
  cmp "$file" "$work/$(basename "$file")" || Fail "$(basename "$file") is missing or differs"
  count=$((count + 1))
done
[ "$count" -gt 3 ] || Fail "there are no sources in $sources"
# The lists are of use only when the viewer's window names them.
"$chmls" -n printsystem "$helpFile" >"$work/said" 2>&1
for expected in '(2).*welcome\.htm' '(0).*bxvbwiz\.hhc' '(1).*bxvbwiz\.hhk' '(5).*main'; do
  grep -q "$expected" "$work/said" || Fail "the file's header lacks $expected"
done
exit "$((failures > 0))"
