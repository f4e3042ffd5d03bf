#!/usr/bin/env bash
# The check of the floors finds each kind of fault, and none in a sound house.
# usage: check_floors_test.sh CHECK_FLOORS
set -uo pipefail
check=$1
house=$(mktemp -d)
trap 'rm -rf "$house"' EXIT
failures=0

# Expect RESULT FILE INCLUDE...: a house with only that file is found good or bad.
Expect() {
  local expected=$1 file=$2 found=good include
  shift 2
  rm -rf "${house:?}"/*
  mkdir -p "$house/$(dirname "$file")"
  for include in "$@"; do echo "#include $include"; done >"$house/$file"
  "$check" "$house" >/dev/null || found=bad
  [ "$found" = "$expected" ] && return
  echo "$file with $*: $found instead of $expected"
  failures=1
}

Expect good project/A.h '"platform/P.h"' '"project/B.h"' '<string>'
Expect good machine/host/posix/H.cpp '<unistd.h>' '<sys/wait.h>'
Expect good win32/W.cpp '<windows.h>'
Expect good com/C.cpp '<windows.h>' '"ui/win32/F.h"'
Expect bad platform/P.h '"support/S.h"'
Expect bad setupgen/G.cpp '"ui/frmMain.h"'
Expect bad com/C.cpp '"cli/Main.h"'
Expect bad support/S.cpp '"S.h"'
Expect bad attic/A.h '<string>'
Expect bad machine/M.cpp '<unistd.h>'
Expect bad support/S.cpp '<Windows.h>'
Expect bad support/S.h '"support/S.h"'

echo '#include "support/T.h"' >"$house/support/S.h"
echo '#include "support/S.h"' >"$house/support/T.h"
if "$check" "$house" >/dev/null; then
  echo "two headers that include each other: not found"
  failures=1
fi
exit "$failures"
