#!/usr/bin/env bash
# Compares the imported modules and exported names that inspect gives for every DLL of a folder (default: those of
# the 32-bit Wine) with those of objdump -p; prints counts and the differences, and fails when there are any. Order and
# spelling matter. Of exported names that differ only in case, inspect keeps the first, so they count once on both
# sides.
set -euo pipefail
cd "$(dirname "$0")/.."
folder=${1:-/usr/lib/i386-linux-gnu/wine/i386-windows}
objdump=${OBJDUMP:-i686-w64-mingw32-objdump}
scripts/install.sh build windows
cmake --preset native >/dev/null
cmake --build --preset native --parallel 2 --target bxvbwiz >build/compare.log || { tail -n 40 build/compare.log; exit 1; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
find "$folder" -maxdepth 1 -iname '*.dll' | LC_ALL=C sort >"$work/files"
[ -s "$work/files" ] || { echo "compare_objdump.sh: no DLL in $folder" >&2; exit 1; }

# Both give lines "FILE TAB imports|exports TAB NAME".
xargs -d '\n' build/native/bin/bxvbwiz inspect <"$work/files" 2>"$work/ours.err" | awk '
  /^[^ ].*: .*register code/ { file = $0; sub(/: .*/, "", file); next }
  /^  (imports|exports)/ { kind = $1; sub(/:.*/, "", kind); next }
  /^    / { print file "\t" kind "\t" substr($0, 5) }' >"$work/ours"
{ xargs -d '\n' "$objdump" -p <"$work/files" 2>"$work/theirs.err" || true; } | awk '
  /:     file format / { file = $0; sub(/:     file format .*/, "", file); table = 0; next }
  /^\tDLL Name: / { print file "\timports\t" substr($0, 12); next }
  /^\[Ordinal\/Name Pointer\] Table/ { table = 1; next }
  table && /^\t\[ *[0-9]+\] / {
    name = $0; sub(/^\t\[ *[0-9]+\] /, "", name); sub(/^\+base\[ *[0-9]+\] +[0-9a-f]+ /, "", name)
    if (!seen[file "\t" tolower(name)]++) print file "\texports\t" name
    next
  }
  table && !/^\t/ { table = 0 }' >"$work/theirs"

for kind in imports exports; do
  for side in ours theirs; do grep -P "\t$kind\t" "$work/$side" >"$work/$side.$kind" || true; done
  diff "$work/theirs.$kind" "$work/ours.$kind" >"$work/diff.$kind" || true
  printf '%s: %d by objdump, %d by inspect, %d differences\n' "$kind" "$(wc -l <"$work/theirs.$kind")" \
    "$(wc -l <"$work/ours.$kind")" "$(grep -c '^[<>]' "$work/diff.$kind" || true)"
done
printf 'files: %d; with names: %d by objdump, %d by inspect\n' "$(wc -l <"$work/files")" \
  "$(cut -f 1 "$work/theirs" | sort -u | wc -l)" "$(cut -f 1 "$work/ours" | sort -u | wc -l)"
cat "$work/ours.err"
head -n 40 "$work/diff.imports" "$work/diff.exports" | grep '^[<>]' || true
[ ! -s "$work/diff.imports" ] && [ ! -s "$work/diff.exports" ]
