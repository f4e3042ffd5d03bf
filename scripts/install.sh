#!/usr/bin/env bash
# Installs what is missing for: build, tests, tidy, windows, bench, packages (any of them as arguments; default build).
# What is there is left alone: each need is looked for as a program or file, not as a package, and nothing is upgraded.
set -euo pipefail

HasProgram() { command -v "$1" >/dev/null 2>&1; }
# The compiler finds the header.
HasHeader() { HasProgram g++ && echo "#include <$1>" | g++ -std=c++17 -E -x c++ - >/dev/null 2>&1; }

wantsWine32=no
HasWine32() { [ -x /usr/lib/wine/wine ]; }

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
    tidy)
      Need clang-tidy HasProgram clang-tidy
      ;;
    windows)
      Need g++-mingw-w64-i686-posix HasProgram i686-w64-mingw32-g++-posix
      Need g++-mingw-w64-x86-64-posix HasProgram x86_64-w64-mingw32-g++-posix
      Need mingw-w64-tools HasProgram x86_64-w64-mingw32-widl
      Need fp-utils HasProgram chmcmd
      Need googletest test -f /usr/src/googletest/googletest/CMakeLists.txt
      Need wine HasProgram wine
      Need wine64 test -e /usr/lib/wine/wine64
      Need fonts-liberation test -d /usr/share/fonts/truetype/liberation
      Need locales test -f /usr/share/i18n/locales/ja_JP
      Need xvfb HasProgram Xvfb
      Need openbox HasProgram openbox
      Need imagemagick HasProgram import
      wantsWine32=yes
      ;;
    bench)
      Need time test -x /usr/bin/time
      Need libbenchmark-dev HasHeader benchmark/benchmark.h
      Need binutils HasProgram objdump
      Need llvm HasProgram llvm-readobj
      Need crudini HasProgram crudini
      ;;
    packages)
      Need git HasProgram git
      Need dpkg-dev HasProgram dpkg-shlibdeps
      ;;
    *)
      echo "install.sh: unknown purpose '$purpose'; the purposes are build, tests, tidy, windows, bench and packages" >&2
      exit 2
      ;;
  esac
done
HasWine32 && wantsWine32=no
[ ${#missing[@]} -gt 0 ] || [ "$wantsWine32" = yes ] || exit 0

if ! HasProgram apt-get; then
  echo "install.sh: this system has no apt-get; install the contents of these Debian packages yourself: ${missing[*]}" >&2
  exit 1
fi
asRoot=()
if [ "$(id -u)" -ne 0 ]; then
  if ! HasProgram sudo; then
    echo "install.sh: needs root or sudo to install these packages: ${missing[*]}" >&2
    exit 1
  fi
  asRoot=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
trap 'rm -f "$log"' EXIT
Quietly() { "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive "$@" >"$log" 2>&1 </dev/null || { cat "$log" >&2; exit 1; }; }
Install() { "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get "$@" >"$log" 2>&1 </dev/null; }

# The 32-bit Wine comes from the other architecture's archive. If that is out of step with this one's (or cannot be
# fetched completely), the release's own archive has matching versions of both.
InstallWine32() {
  "${asRoot[@]}" dpkg --add-architecture i386 || return
  Install update || true
  Install install --yes --no-remove --no-install-recommends wine32:i386 && return
  local pin
  pin=$(mktemp)
  printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$(. /etc/os-release && echo "$VERSION_CODENAME")" >"$pin"
  chmod a+r "$pin"
  Install install -o "Dir::Etc::Preferences=$pin" --yes --allow-downgrades --no-remove --no-install-recommends \
    wine wine64 wine32:i386
  local code=$?
  rm -f "$pin"
  return $code
}

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  Install update || true  # one index that cannot be fetched need not be one that is needed
  Quietly apt-get install --yes --no-upgrade --no-install-recommends "${missing[@]}"
fi
if [ "$wantsWine32" = yes ]; then
  echo "Installing: wine32:i386"
  InstallWine32 || echo "The 32-bit Wine cannot be installed here: only the 64-bit programs will be tested."
fi
