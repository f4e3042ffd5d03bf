#!/usr/bin/env bash
# Builds the packages of the present commit from a clean clone: release.sh [FOLDER]   (default: build/release)
# FOLDER gets a ZIP archive for Windows, a Debian package and an archive for this kind of computer, and their checksums.
# With the same compilers, two runs on one commit give equal files: every time stamp is that of the commit, or
# SOURCE_DATE_EPOCH.
set -euo pipefail
if [ $# -gt 1 ] || [[ ${1:-} == -* ]]; then
  echo "usage: release.sh [FOLDER]" >&2
  exit 2
fi
cd "$(dirname "$0")/.."
repository=$PWD
out=${1:-build/release}
scripts/install.sh build windows packages
mkdir -p "$out" build
out=$(cd "$out" && pwd)
clone=$(mktemp -d)
trap 'rm -rf "$clone"' EXIT
git clone --quiet --no-hardlinks "$repository" "$clone/bxvbwiz"
cd "$clone/bxvbwiz"
SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct)}
export SOURCE_DATE_EPOCH

Quietly() { "$@" >"$clone/log" 2>&1 || { tail -n 40 "$clone/log" >&2; exit 1; }; }
for preset in native win32; do
  echo "Building $preset ..."
  # The folder of the clone must not stay in the programs.
  Quietly cmake --preset $preset "-DCMAKE_CXX_FLAGS=-ffile-prefix-map=$PWD=."
  Quietly cmake --build --preset $preset --parallel "$(nproc)"
  Quietly cpack --config build/$preset/CPackConfig.cmake
done
cp build/*/packages/bxvbwiz*.{zip,deb,tar.gz} "$out"
cd "$out"
sha256sum bxvbwiz*.{zip,deb,tar.gz} | tee SHA256SUMS
