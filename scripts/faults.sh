#!/usr/bin/env bash
# Breaks whole runs at every system call and at every write to the disk (minutes); test.sh takes a sample of them.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests
cmake --preset asan >/dev/null
cmake --build --preset asan --parallel 2 --target faults_tests
BXVBWIZ_FAULTS=all build/asan/bin/faults_tests "$@"
