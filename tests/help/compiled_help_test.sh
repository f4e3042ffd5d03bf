#!/usr/bin/env bash
# The compiled help file holds every page and list, and opens with its first page, contents and index.
# usage: compiled_help_test.sh CHMLS HELP_FILE PAGES
set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$1" extractall "$2" "$work/" >/dev/null 2>&1
for file in "$3"/*.htm "$3"/*.css "$3"/*.hhc "$3"/*.hhk; do
  cmp "$file" "$work/${file##*/}"
done
header=$("$1" -n printsystem "$2" 2>&1)
for expected in '(2).*welcome\.htm' '(0).*bxvbwiz\.hhc' '(1).*bxvbwiz\.hhk' '(5).*main'; do
  grep -q "$expected" <<<"$header" || { echo "the header lacks $expected"; exit 1; }
done
