#!/usr/bin/env bash
# Builds with -O2 and prints the table of docs/performance.md: what must hold, measured in turn with a tool that does
# part of the same work; medians of nine. performance.sh --write rewrites the page. Fails when a limit is missed.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build windows bench
cmake --preset native -B build/bench -DBXVBWIZ_BENCHMARKS=ON -DCMAKE_CXX_FLAGS_RELEASE="-O2 -DNDEBUG" >/dev/null
cmake --build build/bench --parallel 2 --target bxvbwiz figures makepe >build/bench.log || { tail -n 40 build/bench.log; exit 1; }
bxvbwiz=$PWD/build/bench/bin/bxvbwiz
figures=$PWD/build/bench/bin/figures
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
missed=0
rounds=9
rows=$work/rows
: >"$rows"

Median() { sort -g | awk '{ value[NR] = $1 } END { print value[int((NR + 1) / 2)] }'; }
# Runs two functions in turn and sets $ours and $theirs to the medians of their seconds. "BeforeEach" runs before every
# call and is not measured.
Compare() {  # Compare OURS THEIRS
  local round which start
  : >"$work/seconds.1"
  : >"$work/seconds.2"
  for ((round = 0; round < rounds; ++round)); do
    for which in 1 2; do
      BeforeEach
      rm -f "$work/output"  # otherwise emptying what the other wrote would count as our time
      start=$EPOCHREALTIME
      "${!which}" >"$work/output" 2>"$work/errors" ||
        { cat "$work/errors"; echo "performance.sh: ${!which} failed" >&2; exit 1; }
      awk -v start="$start" -v end="$EPOCHREALTIME" 'BEGIN { print end - start }' >>"$work/seconds.$which"
    done
  done
  ours=$(Median <"$work/seconds.1")
  theirs=$(Median <"$work/seconds.2")
}
BeforeEach() { :; }
Row() {  # Row WHAT TOOL LIMIT-TEXT GREATEST-RATIO: of the last comparison
  awk -v what="$1" -v tool="$2" -v text="$3" -v limit="$4" -v ours="$ours" -v theirs="$theirs" 'BEGIN {
    ratio = ours / theirs
    shown = ratio < 1 ? sprintf("%.1f times faster", 1 / ratio) : sprintf("%.2f times", ratio)
    printf "| %s | %.2f ms | `%s`: %.2f ms | %s | %s | %s |\n", what, ours * 1000, tool, theirs * 1000, shown, text,
      ratio <= limit ? "held" : "**missed**"
    exit ratio > limit
  }' >>"$rows" || missed=1
}
NewMachine() {  # NewMachine FOLDER
  "$bxvbwiz" machine new "$1" >"$work/output"
  mkdir -p "$1/drive_c/Src"
}

# Executables: all DLLs of the 32-bit Wine
libraries=(/usr/lib/i386-linux-gnu/wine/i386-windows/*.dll)
if [ -e "${libraries[0]}" ]; then
  Inspect() { "$bxvbwiz" inspect "${libraries[@]}"; }
  Objdump() { objdump -p "${libraries[@]}"; }
  Readobj() { llvm-readobj --coff-imports "${libraries[@]}"; }
  Compare Inspect Objdump
  Row "imports and exports of ${#libraries[@]} DLLs" "objdump -p" "at least 10 times faster" 0.1
  Compare Inspect Readobj
  Row "imports and exports of ${#libraries[@]} DLLs" "llvm-readobj --coff-imports" "faster" 1
else
  echo "performance.sh: the 32-bit Wine is not installed; its DLLs are left out" >&2
fi

# Components: 1,000 controls of 100 kB, each with a type library
components=$work/components
NewMachine "$components"
cp "$components/registry.reg" "$work/registry.reg"
for ((number = 1; number <= 1000; ++number)); do
  build/bench/bin/makepe "$components/drive_c/Src/Part$number.ocx" --export DllRegisterServer \
    --typelib "$(printf '5E9E78A0-531B-11CF-91F6-%012X 1.0 0 Part %d' "$number" "$number")"
  head -c 100000 /dev/zero >>"$components/drive_c/Src/Part$number.ocx"
done
BeforeEach() { cp "$work/registry.reg" "$components/registry.reg"; }
Register() { "$bxvbwiz" machine register "$components" "$components/drive_c/Src"; }
Cat() { cat "$components"/drive_c/Src/* >/dev/null; }
Compare Register Cat
Register | grep -q '^Registered 1000 type libraries' || { echo "performance.sh: components are missing" >&2; exit 1; }
Row "registering 1,000 components of 100 kB" "cat" "at most 3 times" 3

# Profile strings: 1,000 keys into a file of 1,000 others
machine=$work/machine
NewMachine "$machine"
Keys() { seq 1000 | sed 's/.*/'"$1"'&=C:\\Windows\\System32\\component&.ocx/'; }
Keys new >"$work/keys"
{ echo '[Files]'; cat "$work/keys"; } >"$work/keys.ini"
{ echo '[Files]'; Keys old; } >"$work/before.ini"
BeforeEach() { cp "$work/before.ini" "$work/theirs.ini"; cp "$work/before.ini" "$machine/drive_c/Src/ours.ini"; }
SetKeys() { "$figures" set-keys "$machine" 'C:\Src\ours.ini' Files <"$work/keys"; }
Crudini() { crudini --merge "$work/theirs.ini" <"$work/keys.ini"; }
Compare SetKeys Crudini
SetKeys
[ "$(grep -c '^new' "$machine/drive_c/Src/ours.ini")" -eq 1000 ] || { echo "performance.sh: keys are missing" >&2; exit 1; }
Row "setting 1,000 keys" "crudini --merge" "at least 10 times faster" 0.1

# A tree: 2,000 small files in 40 folders
for ((folder = 0; folder < 40; ++folder)); do
  mkdir -p "$machine/drive_c/Tree/Folder $folder"
  for ((file = 0; file < 50; ++file)); do
    printf 'File %d of folder %d\r\n' "$file" "$folder" >"$machine/drive_c/Tree/Folder $folder/File $file.txt"
  done
done
# Every copy is a new one beside the others: where files were just removed, the file system is slow to find room for new
# ones, which would hide the difference.
copy=0
BeforeEach() { copy=$((copy + 1)); mkdir "$machine/drive_c/Copy $copy"; }
CopyTree() { "$figures" copy-tree "$machine" 'C:\Tree' "C:\\Copy $copy"; }
CpTree() { cp -r "$machine/drive_c/Tree/." "$machine/drive_c/Copy $copy"; }
Compare CopyTree CpTree
diff -r "$machine/drive_c/Tree" "$machine/drive_c/Copy 1"
Row "copying a tree of 2,000 small files" "cp -r" "at most 1.3 times" 1.3
BeforeEach() { :; }

# The start: 100 runs each, because one is too short to measure
Version() { local run; for ((run = 0; run < 100; ++run)); do "$bxvbwiz" --version; done; }
True() { local run; for ((run = 0; run < 100; ++run)); do /bin/true; done; }
Compare Version True
Row "100 starts (\`--version\`)" "true" "at most twice" 2

# Memory: a generation of 10,000 files
printf 'x' >"$machine/drive_c/Src/Grid.ocx"
printf 'MZ' >"$machine/drive_c/Src/Big.exe"
printf '\r\n[HKEY_CLASSES_ROOT\\TypeLib\\{A}\\1.0\\0\\win32]\r\n@="C:\\\\Src\\\\Grid.ocx"\r\n' >>"$machine/registry.reg"
printf 'Type=Exe\r\nObject={A}#1.0#0; Grid.ocx\r\nExeName32="Big.exe"\r\nName="Big"\r\n' >"$machine/drive_c/Src/Big.vbp"
seq -f 'Part%.0f.dat' 10000 >"$work/names"
(cd "$machine/drive_c/Src" && xargs touch <"$work/names")
awk 'BEGIN { printf "[Grid.ocx]\r\n" } { printf "Uses%d=%s\r\n", NR, $0 }' "$work/names" >"$machine/drive_c/Src/Grid.dep"
awk '{ printf "[%s]\r\nDest=$(APPPATH)\r\n", $0 }' "$work/names" >>"$machine/drive_c/Src/Grid.dep"
for ((round = 0; round < rounds; ++round)); do
  /usr/bin/time -o "$work/time" -f '%M' "$bxvbwiz" generate 'C:\Src\Big.vbp' --machine "$machine" --yes >"$work/output" 2>&1
  tail -n 1 "$work/time" >>"$work/kilobytes"
done
grep -q 'Part9999\.dat' "$work/output" || { echo "performance.sh: files are missing" >&2; exit 1; }
kilobytes=$(Median <"$work/kilobytes")
awk -v kilobytes="$kilobytes" 'BEGIN {
  printf "| memory of a generation of 10,000 files | %.1f MiB | | | below 64 MiB | %s |\n", kilobytes / 1024,
    kilobytes < 65536 ? "held" : "**missed**"
  exit kilobytes >= 65536
}' >>"$rows" || missed=1

# The registry: 100 references on a machine whose key of Windows' settings holds as much as a developer's
references=$work/references
NewMachine "$references"
settings='[HKEY_LOCAL_MACHINE\SOFTWARE\Microsoft\Windows\CurrentVersion'
{
  printf '%s\r\n' '' "$settings]"
  seq -f '"Value%.0f"="x"' 2000
  printf '%s\r\n' "$settings\\SharedDLLs]"
  seq -f '"C:\\Shared%.0f.dll"=dword:1' 2000
  for ((key = 0; key < 150; ++key)); do printf '%s\r\n' "$settings\\Key$key]" '"Value"="x"'; done
} >>"$references/registry.reg"
printf 'Type=Exe\r\nExeName32="Many.exe"\r\nName="Many"\r\n' >"$references/drive_c/Src/Many.vbp"
printf 'MZ' >"$references/drive_c/Src/Many.exe"
for ((library = 0; library < 100; ++library)); do
  printf '%s\r\n' "[HKEY_CLASSES_ROOT\\TypeLib\\{$library}\\1.0\\0\\win32]" "@=\"C:\\\\Src\\\\$library.tlb\"" >>"$references/registry.reg"
  printf '%s\r\n' "Reference=*\\G{$library}#1.0#0#$library.tlb#R" >>"$references/drive_c/Src/Many.vbp"
  printf 'x' >"$references/drive_c/Src/$library.tlb"
done
calls=$("$figures" registry-calls "$references" 'C:\Src\Many.vbp')
awk -v calls="$calls" 'BEGIN {
  printf "| registry calls for each of 100 references | %.1f | | | at most 30 | %s |\n", calls / 100,
    calls <= 3000 ? "held" : "**missed**"
  exit calls > 3000
}' >>"$rows" || missed=1

Page() {
  cat <<'END'
# Performance

What must hold, each compared with a tool that does part of the same work. Both run in turn, in one run of

```
scripts/performance.sh --write
```

which writes this page (without `--write` it only prints the table). Times are medians of nine runs of whole processes,
including their start; the files are in the system's cache. Only the ratios can be compared between computers. The copy
gives every file its name last, so that no reader sees a half-written file, and keeps its time. These are two calls more
than `cp` makes; the faster the file system creates files, the more they count.

END
  Table
}
Table() {
  echo '| what | bxvbwiz | compared with | ratio | limit | |'
  echo '|---|---|---|---|---|---|'
  cat "$rows"
}
Table
if [ "${1:-}" = --write ]; then Page >docs/performance.md; fi
exit "$missed"
