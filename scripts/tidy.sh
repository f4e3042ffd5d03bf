#!/usr/bin/env bash
# Checks the sources with clang-tidy; those for Windows use the headers of the cross compiler.
# usage: tidy.sh [FILE]...; without a file, all of src. Files are checked as they are compiled together, because most of
# the time goes into the headers that they share; a FILE stands for all that are compiled with it. What is clean is not
# checked again until it, a header of ours that it includes, or the way of checking changes (build/tidy keeps the
# fingerprints).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests windows tidy
cmake --preset asan >/dev/null
cmake --preset win32 -B build/tidy/win32 -D CMAKE_UNITY_BUILD=ON -D CMAKE_UNITY_BUILD_BATCH_SIZE=12 >/dev/null
cmake --build build/tidy/win32 --target type_library >/dev/null

# The folders of the cross compiler's C++ and system headers; clang has its own in place of the compiler's.
crossHeaders=$(i686-w64-mingw32-g++-posix -E -x c++ - -v </dev/null 2>&1 |
  sed -nE '/<\.\.\.> search starts/,/^End/{/include\/c\+\+|mingw32\/include$/s/^ /--extra-arg=-isystem/p}' | tr '\n' ' ')
export crossHeaders

Check() {  # Check BATCH FINGERPRINT
  local output options=(-p build/asan)
  case $1 in
    build/tidy/win32/*)
      # shellcheck disable=SC2206
      options=(-p build/tidy/win32 --extra-arg-before=--target=i686-w64-mingw32 --extra-arg=-nostdinc++ $crossHeaders) ;;
  esac
  # A batch includes sources, and that is what is suspicious.
  output=$(clang-tidy --quiet --checks=-bugprone-suspicious-include --warnings-as-errors='*' "${options[@]}" "$1" 2>&1) ||
    { grep -v ' generated\.$' <<<"$output"; return 1; }
  echo "$2" >"build/tidy/${1//\//,}"
}
export -f Check

# The sources of src that CMake has put together; of those for Windows, the ones with files that only Windows has.
Batches() {
  sed -nE "s#^ *\"file\": \"$PWD/(build/[^\"]*/src/[^\"]*_cxx\.cxx)\".*#\1#p" build/asan/compile_commands.json
  sed -nE "s#^ *\"file\": \"$PWD/(build/[^\"]*/src/[^\"]*_cxx\.cxx)\".*#\1#p" build/tidy/win32/compile_commands.json |
    xargs grep -lE '"/.*/src/((.*/)?win32|com)/'
}

checking=$({ cat .clang-tidy scripts/tidy.sh src/com/*.idl; clang-tidy --version; } | sha1sum)
# The fingerprint of a batch combines those of all files of ours that it includes, directly or not.
{
  Batches | sed 's/^/batch /'
  find src -name '*.h' -o -name '*.cpp' -o -name '*.inc' | sort | xargs sha1sum
  { grep -rE '^ *# *include *"' --include='*.h' --include='*.cpp' src; Batches | xargs grep -HE '^#include "'; } |
    sed -E "s#\"$PWD/src/#\"#; s#^([^:]*):[^\"]*\"([^\"]*)\".*#include \\1 src/\\2#"
} | awk -v checking="${checking%% *}" -v wanted=" $* " '
  $1 == "include" { includes[$2] = includes[$2] " " $3; next }
  $1 == "batch" { batches[$2] = 1; next }
  { hash[$2] = $1 }
  function Visit(path, names, count, i) {
    if (path in seen) return
    seen[path] = 1
    fingerprint = fingerprint " " hash[path]
    count = split(includes[path], names, " ")
    for (i = 1; i <= count; i++) Visit(names[i])
  }
  END {
    for (batch in batches) {
      isWanted = wanted == "  "
      count = split(includes[batch], files, " ")
      for (i = 1; i <= count; i++) if (index(wanted, " " files[i] " ") != 0) isWanted = 1
      if (!isWanted) continue
      split("", seen)
      fingerprint = checking
      Visit(batch)
      found = 1
      print batch
      print fingerprint
    }
    if (!found) { print "tidy.sh: no source of src that is compiled:" wanted >"/dev/stderr"; exit 2 }
  }' | while read -r batch && read -r fingerprint; do
  known=
  { read -r known <"build/tidy/${batch//\//,}"; } 2>/dev/null || true
  [ "$known" = "$fingerprint" ] || printf '%s\0%s\0' "$batch" "$fingerprint"
done | xargs -0 -r -n 2 -P "$(nproc)" bash -c 'Check "$1" "$2"' tidy.sh
