#!/usr/bin/env bash
# Checks that docs/findings.md is up to date, and that each finding of the table is produced: by a golden case, or, when
# only a system that fails gives it, by the test that the list below names for it.
set -Eeuo pipefail
trap 'echo "${BASH_SOURCE[0]##*/}: line $LINENO failed" >&2' ERR
repository=$(cd "$(dirname "$0")/../.." && pwd)
cd "$repository"
failures=0
scripts/findings.sh --check || failures=1

# Code of the finding, the test that gives it, and what that test expects.
faults=tests/faults/SeamFaultTest.cpp
elsewhere=(
  "file-search-failed $faults [file-search-failed]"
  "file-unreadable $faults [file-unreadable]"
  "registry-key-unreadable $faults [registry-key-unreadable]"
  "profile-unreadable $faults [profile-unreadable]"
  "file-not-written $faults [file-not-written]"
  "system-folder-unknown $faults [system-folder-unknown]"
  "no-identifier $faults [no-identifier]"
  "file-times-not-set $faults [file-times-not-set]"
  "report-without-date $faults [report-without-date]"
  "system-file-list-empty $faults [system-file-list-empty]"
  "written-files-not-listed $faults [written-files-not-listed]"
  "runtime-missing $faults [runtime-missing]"
  "step-failed tests/support/LoggingTest.cpp A step failed"
  "windows-folder-unknown tests/wizard/PagesTest.cpp did not name its Windows folder"
  "file-not-in-group tests/wizard/PagesTest.cpp could not be entered into its file group"
  "found-file-left-out tests/wizard/AnalysisTest.cpp was found, but left out"
  "file-named-twice tests/wizard/AnalysisTest.cpp is in the setup twice"
)

produced=$(cat tests/golden/cases/*/expected/* | grep -aoE '(error|warning|note) \[[a-z-]+\]|"code": "[a-z-]+"' |
  grep -oE '[a-z-]+("|\])' | tr -d '"]' | sort -u)
while read -r code; do
  grep -qx -- "$code" <<<"$produced" && continue
  found=
  for entry in "${elsewhere[@]}"; do
    read -r listed test expected <<<"$entry"
    [ "$listed" != "$code" ] || { grep -qF -- "$expected" "$test" && found=1; }
  done
  [ -n "$found" ] || { echo "no golden case produces the finding $code" >&2 && failures=1; }
done < <(sed -nE 's/^FINDING\(\w+, [0-9]+, "([a-z-]+)".*/\1/p' src/text/Findings.inc)

# An entry that a case has made unnecessary, or that names no finding, would hide a gap later.
for entry in "${elsewhere[@]}"; do
  read -r listed _ <<<"$entry"
  grep -q "\"$listed\"" src/text/Findings.inc || { echo "there is no finding $listed" >&2 && failures=1; }
  ! grep -qx -- "$listed" <<<"$produced" || { echo "$listed is produced by a golden case" >&2 && failures=1; }
done
exit $failures
