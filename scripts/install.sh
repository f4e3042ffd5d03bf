#!/usr/bin/env bash
# Installs what is missing for: build, tests, tidy, windows, bench, packages (any of them as arguments; default build).
# What is there is left alone: each need is looked for as a program or file, not as a package, and nothing is upgraded.
set -euo pipefail

HasProgram() { command -v "$1" >/dev/null 2>&1; }
# The compiler finds the header.
# The newest version of Debian's stable release is enough; older ones do not know the presets.
HasCMake() { HasProgram cmake && printf '%s\n' 3.25 "$(cmake --version | sed -n '1s/[^0-9]*//p')" | sort -CV; }
HasHeader() { HasProgram g++ && echo "#include <$1>" | g++ -std=c++17 -E -x c++ - >/dev/null 2>&1; }

HasModule() { python3 -c "import $1" 2>/dev/null; }

wantsWine32=no
wantsChromium=no
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
      Need cmake HasCMake
      Need ninja-build HasProgram ninja
      Need nlohmann-json3-dev HasHeader nlohmann/json.hpp
      Need libcli11-dev HasHeader CLI/CLI.hpp
      ;;
    tests)
      Need libgtest-dev HasHeader gtest/gtest.h
      Need clang-format HasProgram clang-format
      Need python3-jsonschema HasModule jsonschema
      HasProgram chromium || wantsChromium=yes
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
      Need fonts-dejavu-extra test -e /usr/share/fonts/truetype/dejavu/DejaVuSansCondensed.ttf
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
      Need file HasProgram file
      ;;
    *)
      echo "install.sh: unknown purpose '$purpose'; the purposes are build, tests, tidy, windows, bench and packages" >&2
      exit 2
      ;;
  esac
done
HasWine32 && wantsWine32=no
[ "${#missing[@]} $wantsWine32 $wantsChromium" != '0 no no' ] || exit 0

# What is optional is never a reason to fail.
GiveUp() {  # GiveUp REASON
  if [ ${#missing[@]} -eq 0 ]; then
    [ "$wantsWine32" = no ] || echo "The 32-bit Wine is not installed ($1): only the 64-bit programs will be tested."
    [ "$wantsChromium" = no ] || echo "Chromium is not installed ($1): no test will look at the page of --html."
    exit 0
  fi
  echo "install.sh: $1; these Debian packages are missing: ${missing[*]}" >&2
  exit 1
}
HasProgram apt-get || GiveUp "this system has no apt-get"
asRoot=()
if [ "$(id -u)" -ne 0 ]; then
  HasProgram sudo || GiveUp "installing needs root or sudo"
  asRoot=(sudo)
fi
log=$(mktemp)
trap 'rm -f "$log"' EXIT
# Another program that installs something is waited for.
Apt() {
  "${asRoot[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -o DPkg::Lock::Timeout=600 "$@" >"$log" 2>&1 </dev/null
}

# The 32-bit Wine comes from the other architecture's archive. If that is out of step with this one's (or cannot be
# fetched completely), the release's own archive has matching versions of both. Nothing is ever removed for it.
InstallWine32() {
  "${asRoot[@]}" dpkg --add-architecture i386 || return
  Apt update || true
  Apt install --yes --no-remove --no-install-recommends wine32:i386 && return
  local pin
  pin=$(mktemp)
  printf 'Package: *\nPin: release n=%s\nPin-Priority: 1001\n' "$(. /etc/os-release && echo "$VERSION_CODENAME")" >"$pin"
  chmod a+r "$pin"
  Apt install -o "Dir::Etc::Preferences=$pin" --yes --allow-downgrades --no-remove --no-install-recommends \
    wine wine64 wine32:i386
  local code=$?
  rm -f "$pin"
  return $code
}

if [ ${#missing[@]} -gt 0 ]; then
  echo "Installing: ${missing[*]}"
  Apt update || true  # one index that cannot be fetched need not be one that is needed
  Apt install --yes --no-upgrade --no-remove --no-install-recommends "${missing[@]}" || {
    cat "$log" >&2
    GiveUp "apt-get cannot install them"
  }
fi
if [ "$wantsWine32" = yes ]; then
  echo "Installing: wine32:i386"
  InstallWine32 || echo "The 32-bit Wine cannot be installed here: only the 64-bit programs will be tested."
fi
if [ "$wantsChromium" = yes ]; then
  echo "Installing: chromium"
  Apt install --yes --no-upgrade --no-remove --no-install-recommends chromium ||
    echo "Chromium cannot be installed here: no test will look at the page of --html."
fi
