#!/usr/bin/env bash
# Runs whole runs in which each system call and each write to the disk fails in turn (minutes); test.sh tries a sample.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests
cmake --preset asan >/dev/null
cmake --build --preset asan --parallel 2 --target faults_tests
BXVBWIZ_FAULTS=all build/asan/bin/faults_tests "$@"
