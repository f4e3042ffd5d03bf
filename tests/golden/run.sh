#!/usr/bin/env bash
# Runs bxvbwiz on the golden cases and compares everything that it did with what is expected.
# usage: run.sh [CASE]...              without a case: all of them
#        run.sh --update [CASE]...     rewrites what is expected instead; read the diff before you keep it
#        run.sh --captured [CASE]...   on what bxvbwiz captures of each machine, which must give the same
#        run.sh --files [CASE]...      ignores what is printed, for a program that does the same in windows
#        run.sh --relations [CASE]...  checks what must hold for every setup project (see relations.sh)
#        run.sh --lay-out CASE DIR     only makes the machine folder of the case
#
# A case is a folder of cases/. It holds only what differs from the case named in its file "like" or, without one, from
# "plain", the smallest project there is. Everything is optional:
#   like             the name of another case
#   options          the arguments of bxvbwiz, quoted as for a shell; $machine is the machine folder, $drive_c drive C
#   machine/         files laid over the machine folder of the other case
#   machine/vb6.txt  what the stand-in for the compiler, vb6.exe, does (see compiler.cpp)
#   executables      more programs and DLLs, one a line: path in the machine folder and options of makepe
#   registry.reg     more lines of the registry
#   remove           files and folders of the other case that this one lacks, one a line
#   expected/output  standard output
#   expected/result  exit code, standard error, and all files that were made, changed or removed, with their content.
#                    A file that is still as it was copied from the template is only named, and so is a list of findings
#                    that were printed. The time and the folder of the run are masked.
# For a new case, write what differs, run --update on it, and read what it has put into expected/.
set -Eeuo pipefail
trap 'echo "${BASH_SOURCE[0]##*/}: line $LINENO failed" >&2' ERR  # report where a run stops
golden=$(cd "$(dirname "$0")" && pwd)
repository=$(cd "$golden/../.." && pwd)
cases=$golden/cases
bxvbwiz=${BXVBWIZ:-$repository/build/asan/bin/bxvbwiz}
native=${NATIVE:-$bxvbwiz}  # what runs on captured machines
makepe=${MAKEPE:-$(dirname "$bxvbwiz")/makepe}
compiler=${COMPILER:-$(dirname "$makepe")/compiler}
export LC_ALL=C TZ=UTC SOURCE_DATE_EPOCH=1137321000
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Sets $layers to the folders that make up a case, the most general one first, and $folder to where it runs.
Open() {  # Open CASE
  local name=$1
  [ -d "$cases/$name" ] || { echo "run.sh: no case $name in $cases" >&2; exit 2; }
  folder=$work/$name
  layers=()
  while [ "$name" != plain ]; do
    layers=("$cases/$name" "${layers[@]}")
    name=$(cat "$cases/$name/like" 2>/dev/null || echo plain)
  done
  layers=("$cases/plain" "${layers[@]}")
}

# Prints the path of a file of the case: that of the last layer that has one.
Find() {  # Find FILE
  local layer found=/dev/null
  for layer in "${layers[@]}"; do [ ! -f "$layer/$1" ] || found=$layer/$1; done
  echo "$found"
}

LayOut() {  # LayOut MACHINE
  local layer line arguments
  mkdir -p "$1"
  for layer in "${layers[@]}"; do
    [ ! -d "$layer/machine" ] || cp -R "$layer/machine/." "$1"
    [ ! -f "$layer/registry.reg" ] || cat "$layer/registry.reg" >>"$1/registry.reg"
    while IFS= read -r line; do
      eval "arguments=($line)"
      (cd "$1" && "$makepe" "${arguments[@]}")
    done < <(cat "$layer/executables" 2>/dev/null || true)
    while IFS= read -r line; do rm -r "${1:?}/$line"; done < <(cat "$layer/remove" 2>/dev/null || true)
  done
  [ ! -f "$1/vb6.txt" ] || cp "$compiler" "$1/vb6.exe"
}

# Sets $options to the arguments of bxvbwiz.
ReadOptions() {  # ReadOptions MACHINE DRIVE_C
  local machine=$1 drive_c=$2
  eval "options=($(cat "$(Find options)"))"
}

# Prints a file under a title.
Print() {  # Print TITLE FILE
  echo "== $1"
  cat "$2"
  [ -z "$(tail -c 1 "$2")" ] || printf '\n(no end of line)\n'
}

# Whether a file holds the findings that were printed. In windows they are expected, but not printed.
SaysTheSame() {  # SaysTheSame FILE
  local messages=$folder/messages
  [ "$mode" != --files ] || messages=$(Find expected/result)
  cmp -s <(tr -d '\r' <"$1" | FindingLines) <(sed -E 's/^bxvbwiz: ((error|warning|note) )/\1/' "$messages" | FindingLines)
}

# Keeps the lines of findings; of a note the first one, as it is printed.
FindingLines() { awk '/^[a-z]/ { note = /^note / } /^(error|warning|note) / || (!note && /^  (from|to do): /)'; }

# Prints what is in a folder, sorted: a checksum and a path, of empty folders "-" and the path.
Contents() {  # Contents FOLDER
  (cd "$1" && { find -- * -type f -exec cksum {} + | sed 's/ /:/'; find -- * -type d -empty -printf '- %p\n'; } | sort)
}

# Prints what a run made of $folder/before: what $folder/machine has, then what it lacks.
PrintChanges() {
  local path before=$folder/before after=$folder/machine
  local template="$before/drive_c/Program Files/Borvex/VBWiz/Template"
  comm -13 <(Contents "$before") <(Contents "$after") | cut -d ' ' -f 2- | sort | while IFS= read -r path; do
    if [ -d "$after/$path" ]; then
      [ -d "$before/$path" ] || echo "== $path/ is empty"
    elif cmp -s "$template/${path#drive_c/*/*/}" "$after/$path"; then
      echo "== $path is the template's"
    elif [[ $path == */"Left To Do.txt" ]] && SaysTheSame "$after/$path"; then
      echo "== $path says what the messages say"
    else
      Print "$path" "$after/$path"
    fi
  done
  comm -23 <(cd "$before" && find -- * | sort) <(cd "$after" && find -- * | sort) | sed 's/.*/== & is gone/'
}

# Prints a result without what may differ from the expectation: the version of the program.
masks=(-e 's/^(  "version": ")[0-9.]+/\1<a version>/')
Masked() { sed -E "${masks[@]}" "$1"; }

# Writes the result of a run, and masks what differs from run to run.
WriteResult() {  # WriteResult EXIT-CODE MACHINE
  { echo "== exit code $1"; Print messages "$folder/messages"; PrintChanges; } >"$folder/result"
  sed -E -i -e 's#^1/15/2006 10:30:00 AM#<the present time>#' -e "s#$2#<machine>#g" "$folder/output" "$folder/result"
}

# Runs a program on the machine folder $folder/machine.
RunInFolder() {  # RunInFolder PROGRAM...
  local machine=$folder/machine options code=0
  ReadOptions "$machine" "$machine/drive_c"
  rm -rf "$folder/before"
  cp -R "$machine" "$folder/before"
  (cd "$folder" && BXVBWIZ_MACHINE=$machine "$@" "${options[@]}" >output 2>messages </dev/null) || code=$?
  WriteResult "$code" "$machine"
}

RunCase() {
  LayOut "$folder/machine"
  RunInFolder "${run[@]}"
}

RunCaptured() {
  local source=$folder/source options
  LayOut "$source"
  ReadOptions "$source" "$source/drive_c"
  BXVBWIZ_MACHINE=$source Capture "$folder/machine" "${run[@]}"
  RunInFolder "$native"
}

# Captures into $folder/machine. A capture may leave something out; if it makes no machine at all, its messages are
# shown.
Capture() {  # Capture MACHINE PROGRAM...
  (cd "$folder" && "${@:2}" capture "${options[@]:1}" --to "$1" >captured 2>&1 </dev/null) || true
  [ -d "$folder/machine" ] || cat "$folder/captured" >&2
}

# Whether the mode covers the case: captures and relations need a setup project that is made without a compiler; in
# windows there is neither --strict nor --no-rebuild, and every question needs an answer.
IsInMode() {  # IsInMode CASE
  local options
  options=$(cat "$(Find options)")
  case $mode in
    --captured | --relations)
      [[ $options == generate* && $options != *--machine* && $(Find machine/vb6.txt) == /dev/null ]] &&
        grep -q '^== exit code [04]$' "$(Find expected/result)"
      ;;
    --files) [[ $options == generate* && $options != *--@(strict|machine|no-rebuild)* && $1 != *-unanswered ]] ;;
  esac
}

# Keeps what differs from what the case inherits.
Update() {  # Update CASE
  local file
  for file in output result; do
    rm -f "$cases/$1/expected/$file"
    cmp -s "$(Find "expected/$file")" "$folder/$file" || install -D -m 644 "$folder/$file" "$cases/$1/expected/$file"
  done
}

WithoutMessages() { Masked "$1" | sed '/^== messages$/,/^== /{/^== /!d}'; }

Compare() {  # Compare CASE
  local file files=(result output) shown=(Masked)
  [ "$mode" != --files ] || { files=(result) shown=(WithoutMessages); }
  for file in "${files[@]}"; do
    diff -u -a -F '^== ' --label "$1/expected/$file" <("${shown[@]}" "$(Find "expected/$file")") \
      --label "actual $file" <("${shown[@]}" "$folder/$file") && continue
    echo "$1: not as expected; when it is right: tests/golden/run.sh --update $1" >&2
    failures=$((failures + 1))
  done
}

run=("$bxvbwiz")
mode=
[[ ${1:-} != --* ]] || { mode=$1 && shift; }
case $mode in
  "" | --update | --files) ;;
  --lay-out)
    Open "$1"
    LayOut "$2"
    exit
    ;;
  --captured) RunCase() { RunCaptured; } ;;
  --relations) . "$golden/relations.sh" ;;
  *) echo "run.sh: no option $mode" >&2 && exit 2 ;;
esac
[[ $bxvbwiz != *.exe ]] || . "$golden/on_windows.sh"
if [ $# -eq 0 ]; then
  # Cases that others build on come first, for --update.
  mapfile -t all < <(for case in $(ls "$cases"); do Open "$case"; echo "${#layers[@]} $case"; done | sort -n)
  set -- "${all[@]#* }"
fi

failures=0
for case; do
  Open "$case"
  IsInMode "$case" || continue
  mkdir "$folder"
  RunCase
  if [ "$mode" = --update ]; then Update "$case"; else Compare "$case"; fi
  rm -rf "${folder:?}"
done
exit $((failures > 0))
