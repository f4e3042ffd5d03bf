#!/usr/bin/env bash
# Builds with -O2, prints the figures that must hold, each measured against a plain tool in the same run, and then runs
# the benchmarks of bench/ with the arguments (such as --benchmark_filter=...). With --figures it stops before them.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build bench
cmake --preset native -B build/bench -DBXVBWIZ_BENCHMARKS=ON -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" >/dev/null
cmake --build build/bench --parallel 2 >build/bench.log || { tail -n 40 build/bench.log; exit 1; }
bxvbwiz=$PWD/build/bench/bin/bxvbwiz
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
missed=0

# Sets $seconds to the fastest of five runs, and $kilobytes to the largest resident size.
Measure() {  # Measure COMMAND...
  local start end
  seconds=9999
  kilobytes=0
  for _ in 1 2 3 4 5; do
    start=$EPOCHREALTIME
    /usr/bin/time -o "$work/time" -f '%M' "$@" >"$work/output" 2>&1 ||
      { cat "$work/output"; echo "bench.sh: '$*' failed" >&2; exit 1; }
    end=$EPOCHREALTIME
    read -r seconds kilobytes < <(tail -n 1 "$work/time" |
      awk -v start="$start" -v end="$end" -v best="$seconds" -v most="$kilobytes" '{
        print (end - start < best ? end - start : best), ($1 > most ? $1 : most) }')
  done
}
Figure() {  # Figure NAME VALUE BASE LIMIT UNIT
  awk -v name="$1" -v value="$2" -v base="$3" -v limit="$4" -v unit="$5" 'BEGIN {
    ratio = base > 0 ? value / base : 0
    printf "%-46s %8.3f %s / %8.3f %s = %6.2f (at most %s)%s\n", name, value, unit, base, unit, ratio, limit,
      (ratio > limit ? "  MISSED" : "")
    exit ratio > limit
  }' || missed=1
}
NewMachine() {  # NewMachine FOLDER
  "$bxvbwiz" machine new "$1" >"$work/output"
  mkdir -p "$1/drive_c/Src" "$1/drive_c/windows/system32"
  printf 'MZ' >"$1/drive_c/Src/Big.exe"
}
AddControl() {  # AddControl FOLDER
  printf 'x' >"$1/drive_c/Src/Grid.ocx"
  printf '\r\n[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n@="C:\\\\Src\\\\Grid.ocx"\r\n' >>"$1/registry.reg"
}

# 1,000 forms of 2,000 lines, against a search for their controls
machine=$work/forms
NewMachine "$machine"
AddControl "$machine"
{
  printf 'VERSION 5.00\r\nObject = "{A}#1.0#0"; "Grid.ocx"\r\n'
  for ((line = 0; line < 1998; ++line)); do printf '    Total = Total + Price(Index) * Count\r\n'; done
} >"$work/form"
{
  printf 'Type=Exe\r\nExeName32="Big.exe"\r\nName="Big"\r\n'
  for ((number = 0; number < 1000; ++number)); do
    cp "$work/form" "$machine/drive_c/Src/Form$number.frm"
    printf 'Form=Form%d.frm\r\n' "$number"
  done
} >"$machine/drive_c/Src/Big.vbp"
Measure env LC_ALL=C grep -c '^Object =' "$machine"/drive_c/Src/*.frm
base=$seconds
Measure "$bxvbwiz" analyse 'C:\Src\Big.vbp' --machine "$machine" --yes
Figure "analysis of 1,000 forms / grep" "$seconds" "$base" 3 s

# 10,000 files against 1,000, all in one file group
Files() {  # Files COUNT: sets $seconds to the time of a whole run
  machine=$work/files$1
  NewMachine "$machine"
  AddControl "$machine"
  printf 'Type=Exe\r\nObject={A}#1.0#0; Grid.ocx\r\nExeName32="Big.exe"\r\nName="Big"\r\n' >"$machine/drive_c/Src/Big.vbp"
  seq -f 'Part%.0f.dat' "$1" >"$work/names"
  (cd "$machine/drive_c/Src" && xargs touch <"$work/names")
  awk 'BEGIN { printf "[Grid.ocx]\r\n" } { printf "Uses%d=%s\r\n", NR, $0 }' "$work/names" >"$machine/drive_c/Src/Grid.dep"
  awk '{ printf "[%s]\r\nDest=$(APPPATH)\r\n", $0 }' "$work/names" >>"$machine/drive_c/Src/Grid.dep"
  Measure "$bxvbwiz" generate 'C:\Src\Big.vbp' --machine "$machine" --yes
}
Files 1000
base=$seconds
Files 10000
Figure "generation of 10,000 files / 1,000 files" "$seconds" "$base" 12 s

# a registry of 100 MB, against counting its lines
machine=$work/registry
NewMachine "$machine"
printf 'Type=Exe\r\nExeName32="Big.exe"\r\nName="Big"\r\n' >"$machine/drive_c/Src/Big.vbp"
awk 'BEGIN {
  for (size = 0; size < 100 * 1024 * 1024; size += length(text)) {
    number = sprintf("%08d", ++count)
    key = "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Classes\\CLSID\\{" number "-0000-0000-C000-000000000046}"
    text = "\r\n" key "]\r\n@=\"Component " number "\"\r\n\"Flags\"=dword:" number "\r\n\r\n" key \
      "\\InprocServer32]\r\n@=\"C:\\\\WINDOWS\\\\system32\\\\component" number ".ocx\"\r\n" \
      "\"ThreadingModel\"=\"Apartment\"\r\n\"Data\"=hex:01,02"
    for (line = 0; line < 8; ++line) text = text ",\\\r\n  00,11,22,33,44,55,66,77,88,99,aa,bb,cc,dd,ee,ff,00,11,22,33,44,55,66,77,88"
    text = text "\r\n"
    printf "%s", text
  }
}' >>"$machine/registry.reg"
Measure wc -l "$machine/registry.reg"
base=$seconds
Measure "$bxvbwiz" analyse 'C:\Src\Big.vbp' --machine "$machine" --yes
Figure "loading a registry of 100 MB / wc -l" "$seconds" "$base" 12 s
Figure "its memory / its size" "$((kilobytes / 1024))" 100 6 MB

[ "${1:-}" = --figures ] && exit "$missed"
for benchmark in build/bench/bin/*_bench; do
  echo
  echo "== $(basename "$benchmark")"
  "$benchmark" "$@"
done
exit "$missed"
