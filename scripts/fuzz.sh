#!/usr/bin/env bash
# Fuzzes for longer than test.sh: fuzz.sh [--keep] [SECONDS] [TARGET]...   (60 seconds each; without a target: all)
# With clang++ and its libFuzzer the runs are guided by coverage, and new inputs are kept in build/fuzz/corpus;
# otherwise the programs of build/asan make random changes. With --keep, the smallest set of new inputs that reaches all
# newly reached code is added to fuzz/corpus, which test.sh runs.
set -euo pipefail
cd "$(dirname "$0")/.."
keep=no
if [ "${1:-}" = --keep ]; then
  keep=yes
  shift
fi
seconds=60
if [[ ${1:-} =~ ^[0-9]+$ ]]; then
  seconds=$1
  shift
fi
if [ $# -gt 0 ]; then
  targets=("$@")
else
  mapfile -t targets < <(cd fuzz && for file in *_fuzz.cpp; do basename "$file" .cpp; done)
fi

scripts/install.sh build tests
probe=$(mktemp -d)
trap 'rm -rf "$probe"' EXIT
echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' >"$probe/probe.cpp"
if clang++ -fsanitize=fuzzer,address "$probe/probe.cpp" -o "$probe/probe" 2>/dev/null; then
  # -w: the sources are checked for g++'s warnings, not for clang's.
  cmake --preset asan -B build/fuzz -DCMAKE_CXX_COMPILER=clang++ "-DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link -w" \
    -DBXVBWIZ_LIBFUZZER=ON >/dev/null
  cmake --build build/fuzz --target "${targets[@]}"
  for target in "${targets[@]}"; do
    mkdir -p "build/fuzz/corpus/$target"
    echo "== $target, $seconds seconds"
    (cd build/fuzz && "bin/$target" "corpus/$target" "../../fuzz/corpus/$target" -max_total_time="$seconds" \
      -timeout=20 -print_final_stats=1 -verbosity=0)
    # What counts is which code is reached, not how often.
    [ $keep = no ] || (cd build/fuzz && "bin/$target" -set_cover_merge=1 -use_counters=0 -max_len=1024 \
      "../../fuzz/corpus/$target" "corpus/$target")
  done
else
  [ $keep = no ] || { echo "fuzz.sh: --keep needs clang++ with libFuzzer" >&2; exit 1; }
  cmake --preset asan >/dev/null
  cmake --build --preset asan --target "${targets[@]}"
  for target in "${targets[@]}"; do
    echo "== $target, $seconds seconds"
    # A failing input is reported by its number; running out of time is not a failure.
    timeout "$seconds" "build/asan/bin/$target" "fuzz/corpus/$target" 1000000000 || [ $? -eq 124 ]
  done
fi
