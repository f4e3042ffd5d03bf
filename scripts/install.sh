#!/usr/bin/env bash
# Installs what is missing for: build, tests, windows, pictures, bench (any of them as arguments; default build).
# What is there is left alone: each need is looked for by what it gives, not by its package, and nothing is upgraded.
set -euo pipefail

HasProgram() { command -v "$1" >/dev/null 2>&1; }
# The compiler finds the header.
HasHeader() { HasProgram g++ && echo "#include <$1>" | g++ -std=c++17 -E -x c++ - >/dev/null 2>&1; }

missing=()
Need() {  # Need PACKAGE TEST...
  local package=$1
  shift
  "$@" || missing+=("$package")
}

for purpose in "${@:-build}"; do
  case $purpose in
    build)
      Need g++ HasProgram g++
      Need cmake HasProgram cmake
      Need ninja-build HasProgram ninja
      Need nlohmann-json3-dev HasHeader nlohmann/json.hpp
      Need libcli11-dev HasHeader CLI/CLI.hpp
      ;;
    tests)
      Need libgtest-dev HasHeader gtest/gtest.h
      Need clang-format HasProgram clang-format
      ;;
    windows)
      Need g++-mingw-w64-i686-posix HasProgram i686-w64-mingw32-g++-posix
      Need wine HasProgram wine
      Need fonts-liberation test -d /usr/share/fonts/truetype/liberation
      ;;
    pictures)
      Need xvfb HasProgram Xvfb
      Need openbox HasProgram openbox
      Need imagemagick HasProgram import
      ;;
    bench)
      Need time test -x /usr/bin/time
      Need libbenchmark-dev HasHeader benchmark/benchmark.h
      ;;
    *)
      echo "install.sh: unknown purpose '$purpose'; there are build, tests, windows, pictures and bench" >&2
      exit 2
      ;;
  esac
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "Installing: ${missing[*]}"
if ! HasProgram apt-get; then
  echo "install.sh: this system has no apt-get; install by hand what these Debian packages hold: ${missing[*]}" >&2
  exit 1
fi
asRoot=()
if [ "$(id -u)" -ne 0 ]; then
  if ! HasProgram sudo; then
    echo "install.sh: neither root nor sudo; ask for the packages ${missing[*]}" >&2
    exit 1
  fi
  asRoot=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
Quietly() { "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >"$log" 2>&1 </dev/null || { cat "$log" >&2; exit 1; }; }
Quietly apt-get update
Quietly apt-get install --yes --no-upgrade --no-install-recommends "${missing[@]}"
