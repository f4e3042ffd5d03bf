#!/usr/bin/env bash
# Formats all C++ sources; with --check it changes nothing and fails when a file is not formatted.
set -euo pipefail
cd "$(dirname "$0")/.."
Sources() { find src tests tools fuzz bench \( -name '*.h' -o -name '*.cpp' \) -print0 | sort -z; }
if [ "${1:-}" != --check ]; then
  Sources | xargs -0 clang-format -i
  exit 0
fi
# Each version formats in its own way.
if ! clang-format --version | grep -q ' version 14\.'; then
  echo "The format is not checked: the sources are formatted by clang-format 14, and this is $(clang-format --version)."
  exit 0
fi
unformatted=$(Sources | xargs -0 clang-format --dry-run 2>&1 | sed -n 's/^\([^:]*\):[0-9]*:[0-9]*: warning:.*/\1/p' | sort -u)
[ -z "$unformatted" ] && exit 0
echo "Not formatted; run scripts/format.sh to fix:"
echo "$unformatted"
exit 1
