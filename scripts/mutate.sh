#!/usr/bin/env bash
# Reads 20,000 (or COUNT) changed copies of the 32-bit Wine's libraries with the sanitizers; test.sh tries a sample.
# mutate.sh [COUNT [FIRST]]; a mutation depends only on its number.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests windows
cmake --preset asan >/dev/null
cmake --build --preset asan --parallel 2 --target exe_fuzz
# The numbers below 10000 are for the files as they are.
build/asan/bin/exe_fuzz /usr/lib/i386-linux-gnu/wine/i386-windows "${1:-20000}" "${2:-10000}"
