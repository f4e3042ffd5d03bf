#!/usr/bin/env bash
# Makes docs/findings.md from the table of findings.
# usage: findings.sh            writes it
#        findings.sh --check    fails when it is not what the table makes
set -euo pipefail
cd "$(dirname "$0")/.."
page=docs/findings.md

Page() {
  cat <<'END'
# Findings

What `bxvbwiz` and the wizard's window can find wrong with a setup. Made by `scripts/findings.sh` from
`src/text/Findings.inc`. An **error** means that the setup lacks something or will not work, a **warning** that it is likely
wrong; a **note** is worth knowing. `--strict` makes errors and warnings the exit code 4.

| code | severity | text | what to do |
|---|---|---|---|
END
  perl -0777 -ne '
    while (/\nFINDING\(\w+, \d+, "([a-z-]+)", (\w+), "([^"]*)",\s*"([^"]*)",\s*"([^"]*)"\)/g) {
      my ($code, $severity, $values, @texts) = ($1, lc $2, $3, $4, $5);
      my @values = split /,/, $values;
      for (@texts) {
        s/%%(\d)/*$values[$1 - 1]*/g;
        s/\\042/"/g;
        s/\|/\\|/g;
        s/</&lt;/g;
      }
      print "| `$code` | $severity | $texts[0] | $texts[1] |\n";
    }' src/text/Findings.inc
}

if [ "${1:-}" = --check ]; then
  diff -u "$page" <(Page) || { echo "$page is out of date: run scripts/findings.sh" >&2 && exit 1; }
  exit
fi
Page >"$page"
