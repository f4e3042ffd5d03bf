#!/usr/bin/env bash
# Installs what is missing, checks the sources, builds with the sanitizers and for 32-bit and 64-bit Windows, and runs
# every test. The Windows tests run under Wine, in prefixes inside the build tree.
# usage: test.sh [PART]...   without a part: all of them
#   checks   the floors, the format, clang-tidy
#   asan     this computer, with the sanitizers
#   win32    32-bit Windows; some tests need the build of asan
#   win64    64-bit Windows, likewise
# The last line is "N passed, N failed"; the exit code is 0 when none failed. The whole output is in build/test.log.
set -uo pipefail
cd "$(dirname "$0")" || exit 1
for part; do
  case $part in
    checks | asan | win32 | win64) ;;
    --help) sed -n '/^# /s/^# //p' "$0" | sed '/^The last line/q'; exit 0 ;;
    *) echo "test.sh: no part $part; test.sh --help lists them" >&2; exit 2 ;;
  esac
done
[ $# -gt 0 ] || set -- checks asan win32 win64
mkdir -p build
exec 9>build/test.lock
flock --nonblock 9 || { echo "Waiting for another test.sh in this folder ..."; flock 9; }
log=build/test.log
: >"$log"
passed=0
failed=0

Finish() {
  echo "$passed passed, $failed failed"
  [ "$failed" -eq 0 ]
  exit
}
Check() {  # Check NAME COMMAND...: a check beside the tests
  local name=$1
  shift
  if "$@" >build/check.log 2>&1; then
    passed=$((passed + 1))
  else
    failed=$((failed + 1))
    echo "$name failed:"
    cat build/check.log
  fi
  cat build/check.log >>"$log"
}
Build() {  # Build PRESET
  echo "Building $1 (build/$1) ..."
  if ! { cmake --preset "$1" -D BXVBWIZ_TESTS=ON && cmake --build --preset "$1" --parallel "$(nproc)"; } >build/build.log 2>&1; then
    grep -E -B 1 -A 6 '^FAILED|error:|Error' build/build.log | head -n 80
    echo "The build failed; its whole output is in build/build.log."
    failed=$((failed + 1))
    Finish
  fi
}
Test() {  # Test PRESET
  local summary
  # Passed tests are only counted; failed ones are shown as they end.
  ctest --test-dir "build/$1" --parallel "$(nproc)" --output-on-failure --timeout 600 --no-tests=error 2>&1 </dev/null 9>&- | tee "build/ctest.log" |
    grep --line-buffered -vE '^ *Start +[0-9]+: |^ *[0-9]+/[0-9]+ Test .* Passed |^Internal ctest|^Test project |^$|tests passed, '
  cat build/ctest.log >>"$log"
  summary=$(grep -E '^[0-9]+% tests passed, ' build/ctest.log | tail -n 1)
  if [[ $summary =~ ([0-9]+)\ tests?\ failed\ out\ of\ ([0-9]+) ]]; then
    failed=$((failed + BASH_REMATCH[1]))
    passed=$((passed + BASH_REMATCH[2] - BASH_REMATCH[1]))
  else
    echo "CTest printed no summary for $1."
    failed=$((failed + 1))
  fi
}
# Stops only the servers that the tests have started.
StopWine() {
  local prefix
  for prefix in build/wine{,-new} build/win{32,64}/wine-golden{,--captured}; do
    BXVBWIZ_WINEPREFIX=$PWD/$prefix scripts/wine.sh --stop 2>/dev/null
  done
}
trap StopWine EXIT

scripts/install.sh build tests windows tidy packages || { failed=1; Finish; }
for part; do
  if [ "$part" = checks ]; then
    echo "Checking the sources ..."
    Check "The check of the floors" scripts/check_floors.sh
    Check "The check of the format" scripts/format.sh --check
    Check "clang-tidy" scripts/tidy.sh
    continue
  fi
  Build "$part"
  if [ "$part" != win32 ] || [ -x /usr/lib/wine/wine ]; then
    Test "$part"
  else
    echo "32-bit Wine is not installed: the 32-bit programs were built but not tested."
  fi
done
Finish
