#!/usr/bin/env bash
# Runs the whole wizard on made-up projects under the sanitizers and stops at the first that breaks a rule;
# test.sh runs a few.
# usage: projects.sh [COUNT [FIRST]]    default: 10000 from project 1 on; a project is the same under its number
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests
cmake --preset asan >/dev/null
cmake --build --preset asan --parallel 2 --target wizard_tests
if [ -d /dev/shm ]; then export TMPDIR=${TMPDIR:-/dev/shm}; fi # nothing of it is kept
# Most of the time goes into noting who allocated what; a few callers tell enough.
ASAN_OPTIONS=malloc_context_size=3:quarantine_size_mb=16${ASAN_OPTIONS:+:$ASAN_OPTIONS} \
  BXVBWIZ_PROJECTS=${1:-10000} BXVBWIZ_FIRST_PROJECT=${2:-1} build/asan/bin/wizard_tests --gtest_filter='Projects.*'
