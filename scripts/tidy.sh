#!/usr/bin/env bash
# Runs clang-tidy over src (minutes); arguments are files to check instead of all.
set -euo pipefail
cd "$(dirname "$0")/.."
command -v clang-tidy >/dev/null || { echo "tidy.sh: clang-tidy is not installed" >&2; exit 1; }
scripts/install.sh build
cmake --preset native >/dev/null
if [ $# -gt 0 ]; then
  printf '%s\0' "$@"
else
  # The Win32 sources need the headers of a cross compiler.
  find src -name '*.cpp' -not -path '*/win32/*' -not -path '*/com/*' -print0 | sort -z
fi | xargs -0 -n 4 -P 2 clang-tidy -p build/native --quiet --warnings-as-errors='*'
