#!/usr/bin/env bash
# Runs bxvbwiz on the golden cases and compares all that it did with what is expected; --update rewrites the
# expectations instead, to be read in the diff before they are kept.
# usage: run.sh [--update | --files] [CASE]...    without a case: all of them
#        run.sh --captured [CASE]...    on what bxvbwiz captures of each machine, where that must give the same
#        run.sh --lay-out CASE DIR      only makes the case's machine folder DIR, without a run
# --files leaves out what was printed, for a program that takes the same arguments but shows windows.
#
# A case is a folder with
#   options        the arguments of bxvbwiz, quoted as for a shell; $machine is the machine folder
#   machine/       files laid over base/machine (optional)
#   registry.reg   lines added to the base's registry (optional)
#   executables    DLLs made for this case: path in the machine folder and makepe's options, one a line (optional)
#   machine/vb6.txt  what the program does that stands for the compiler, vb6.exe (optional; see compiler.cpp)
#   remove         paths of the base's machine that this case lacks, one a line (optional)
#   expected/      output (standard output), messages (standard error), exitcode, and under machine/ every file
#                  that the run made or changed; removed and empty-folders list what files cannot show
# GUIDs, the time of SOURCE_DATE_EPOCH and the folder of the run are masked in all of them.
set -Eeuo pipefail
trap 'echo "${BASH_SOURCE[0]##*/}: line $LINENO failed" >&2' ERR  # a run that stops says where
golden=$(cd "$(dirname "$0")" && pwd)
repository=$(cd "$golden/../.." && pwd)
bxvbwiz=${BXVBWIZ:-$repository/build/asan/bin/bxvbwiz}
makepe=${MAKEPE:-$(dirname "$bxvbwiz")/makepe}
compiler=${COMPILER:-$(dirname "$makepe")/compiler}
export LC_ALL=C TZ=UTC SOURCE_DATE_EPOCH=1137321000

update=no
captured=no
layOut=no
leftOut=()
case ${1:-} in
  --update)
    update=yes
    shift
    ;;
  --captured)
    captured=yes
    shift
    ;;
  --lay-out)
    layOut=yes
    shift
    ;;
  --files)
    leftOut=(-x output -x messages)
    shift
    ;;
esac

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

MakeExecutables() {  # MakeExecutables LIST MACHINE
  local arguments
  while IFS= read -r line; do
    eval "arguments=($line)"
    (cd "$2" && "$makepe" "${arguments[@]}")
  done <"$1"
}

LayOut() {  # LayOut CASE MACHINE
  local source=$golden/$1 machine=$2
  cp -R "$golden/base/machine" "$machine"
  MakeExecutables "$golden/base/executables" "$machine"
  [ ! -d "$source/machine" ] || cp -R "$source/machine/." "$machine"
  [ ! -f "$machine/vb6.txt" ] || cp "$compiler" "$machine/vb6.exe"
  [ ! -f "$source/registry.reg" ] || cat "$source/registry.reg" >>"$machine/registry.reg"
  [ ! -f "$source/executables" ] || MakeExecutables "$source/executables" "$machine"
  if [ -f "$source/remove" ]; then
    while IFS= read -r path; do rm -r "${machine:?}/$path"; done <"$source/remove"
  fi
}

# Masks what differs from run to run. A MONIKER holds a GUID too, but always the same one.
Mask() {  # Mask MACHINE FILE
  sed -E -i \
    -e 's/^((Installation)?GUID=)[0-9A-F]{8}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{4}-[0-9A-F]{12}/\1<a new GUID>/' \
    -e 's#^1/15/2006 10:30:00 AM#<the present time>#' \
    -e "s#$1#<machine>#g" "$2"
}

# Copies what is new or changed between two folders, and lists what a copy cannot show.
Difference() {  # Difference BEFORE AFTER OUT
  local path
  (cd "$2" && find . -type f -print0 | sort -z) | while IFS= read -r -d '' path; do
    cmp -s "$1/$path" "$2/$path" && continue
    mkdir -p "$3/machine/$(dirname "$path")"
    cp "$2/$path" "$3/machine/$path"
    chmod u+w "$3/machine/$path"
  done
  (cd "$1" && find . | sort) | while IFS= read -r path; do
    [ -e "$2/$path" ] || echo "$path" >>"$3/removed"
  done
  (cd "$2" && find . -type d -empty | sort) | while IFS= read -r path; do
    [ -e "$1/$path" ] || echo "$path" >>"$3/empty-folders"
  done
}

RunOnMachineFolder() {  # RunOnMachineFolder CASE; leaves what happened in $work/CASE/actual
  mkdir -p "$work/$1/actual"
  LayOut "$1" "$work/$1/machine"
  RunInFolder "$1" "${run[@]}"
}

RunInFolder() {  # RunInFolder CASE PROGRAM...; on the machine folder $work/CASE/machine
  local folder=$work/$1 options machine=$work/$1/machine code=0 file
  cp -R "$machine" "$folder/before"
  eval "options=($(cat "$golden/$1/options"))"
  shift
  (cd "$folder" && BXVBWIZ_MACHINE=$machine "$@" "${options[@]}" >actual/output 2>actual/messages </dev/null) || code=$?
  echo "$code" >"$folder/actual/exitcode"
  Difference "$folder/before" "$machine" "$folder/actual"
  find "$folder/actual" -type f ! -name '*.exe' ! -name '*.dll' -print0 | while IFS= read -r -d '' file; do
    Mask "$machine" "$file"
  done
}

# Whether a captured machine must give the same as the machine itself: a setup project was written, on the machine at
# hand, without its compiler.
CanBeCaptured() {  # CanBeCaptured CASE
  grep -q '^generate' "$golden/$1/options" && ! grep -q -e --machine "$golden/$1/options" &&
    [ ! -f "$golden/$1/machine/vb6.txt" ] && grep -q '^[04]$' "$golden/$1/expected/exitcode"
}

Capture() {  # Capture CASE MACHINE PROGRAM...; captures into $work/CASE/machine
  local case=$1 options
  export BXVBWIZ_MACHINE=$2
  eval "options=($(cat "$golden/$1/options"))"
  shift 2
  "$@" capture "${options[@]:1}" --to "$work/$case/machine" >"$work/$case/captured" 2>&1 </dev/null || true
  unset BXVBWIZ_MACHINE
  ShowFailedCapture "$case"
}

# A capture may leave something out and say so; one that gave no machine at all says here why.
ShowFailedCapture() {  # ShowFailedCapture CASE
  [ -d "$work/$1/machine" ] || cat "$work/$1/captured" >&2
}

RunCaptured() {  # RunCaptured CASE
  mkdir -p "$work/$1/actual"
  LayOut "$1" "$work/$1/source"
  Capture "$1" "$work/$1/source" "${run[@]}"
  RunInFolder "$1" "$native"
}

run=("$bxvbwiz")
native=${NATIVE:-$bxvbwiz}  # what runs on captured machines
RunCase() { RunOnMachineFolder "$1"; }
[ "$captured" = no ] || RunCase() { RunCaptured "$1"; }
case $bxvbwiz in *.exe) . "$golden/on_windows.sh" ;; esac

if [ "$layOut" = yes ]; then
  LayOut "$1" "$2"
  exit
fi
if [ $# -gt 0 ]; then
  cases=("$@")
else
  mapfile -t cases < <(cd "$golden" && for file in */options; do dirname "$file"; done)
fi

failures=0
for case in "${cases[@]}"; do
  if [ ! -f "$golden/$case/options" ]; then
    echo "run.sh: no case $case in $golden" >&2
    exit 2
  fi
  [ "$captured" = no ] || CanBeCaptured "$case" || continue
  RunCase "$case"
  if [ "$update" = yes ]; then
    rm -rf "${golden:?}/$case/expected"
    cp -R "$work/$case/actual" "$golden/$case/expected"
  elif ! diff -r -u -a "${leftOut[@]}" "$golden/$case/expected" "$work/$case/actual"; then
    echo "$case: not as expected; when it is right: tests/golden/run.sh --update $case" >&2
    failures=$((failures + 1))
  fi
done
[ "$failures" -eq 0 ]
