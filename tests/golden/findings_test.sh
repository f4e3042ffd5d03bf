#!/usr/bin/env bash
# Checks that docs/findings.md is up to date, and that each finding of the table is produced: by a golden case, or, when
# only a system that fails gives it, by the test that the list below names for it.
set -Eeuo pipefail
trap 'echo "${BASH_SOURCE[0]##*/}: line $LINENO failed" >&2' ERR
repository=$(cd "$(dirname "$0")/../.." && pwd)
cd "$repository"
failures=0
scripts/findings.sh --check || failures=1

# Code of the finding, its name, and the test that mentions the code, the name or the finding's text.
elsewhere=(
)

produced=$(cat tests/golden/cases/*/expected/* | grep -aoE '(error|warning|note) \[[a-z-]+\]|"code": "[a-z-]+"' |
  grep -oE '[a-z-]+("|\])' | tr -d '"]' | sort -u)
while read -r code; do
  grep -qx -- "$code" <<<"$produced" && continue
  found=
  for entry in "${elsewhere[@]}"; do
    read -r listed word test <<<"$entry"
    [ "$listed" != "$code" ] || { grep -qrF -- "$word" "$test" && found=1; }
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
