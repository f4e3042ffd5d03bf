#!/usr/bin/env bash
# Checks the sources with clang-tidy; those for Windows use the headers of the cross compiler.
# usage: tidy.sh [FILE]...; without a file, all of src. A clean file is not checked again until it, a header of ours
# that it includes, or the way of checking changes (build/tidy keeps the fingerprints).
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/install.sh build tests windows tidy
cmake --preset asan >/dev/null
cmake --preset win32 >/dev/null
cmake --build --preset win32 --target type_library >/dev/null
mkdir -p build/tidy

# The folders of the cross compiler's C++ and system headers; clang has its own in place of the compiler's.
crossHeaders=$(i686-w64-mingw32-g++-posix -E -x c++ - -v </dev/null 2>&1 |
  sed -nE '/<\.\.\.> search starts/,/^End/{/include\/c\+\+|mingw32\/include$/s/^ /--extra-arg=-isystem/p}' | tr '\n' ' ')
export crossHeaders

Check() {  # Check FILE FINGERPRINT
  local output options=(-p build/asan)
  case $1 in
    */win32/* | src/com/*)
      # shellcheck disable=SC2206
      options=(-p build/win32 --extra-arg-before=--target=i686-w64-mingw32 --extra-arg=-nostdinc++ $crossHeaders) ;;
  esac
  output=$(clang-tidy --quiet --warnings-as-errors='*' "${options[@]}" "$1" 2>&1) || { grep -v ' generated\.$' <<<"$output"; return 1; }
  echo "$2" >"build/tidy/${1//\//,}"
}
export -f Check

checking=$({ cat .clang-tidy scripts/tidy.sh src/com/*.idl; clang-tidy --version; } | sha1sum)
# The fingerprint of a source combines those of all files of ours that it includes, directly or not.
{
  find src -name '*.h' -o -name '*.cpp' -o -name '*.inc' | sort | xargs sha1sum
  grep -rE '^ *# *include *"' --include='*.h' --include='*.cpp' src | sed -E 's/^([^:]*):[^"]*"([^"]*)".*/include \1 src\/\2/'
} | awk -v checking="${checking%% *}" -v wanted=" $* " '
  $1 == "include" { includes[$2] = includes[$2] " " $3; next }
  { hash[$2] = $1 }
  function Visit(path, names, count, i) {
    if (!(path in hash) || path in seen) return
    seen[path] = 1
    fingerprint = fingerprint " " hash[path]
    count = split(includes[path], names, " ")
    for (i = 1; i <= count; i++) Visit(names[i])
  }
  END {
    for (path in hash) {
      if (path !~ /\.cpp$/ || (wanted != "  " && index(wanted, " " path " ") == 0)) continue
      split("", seen)
      fingerprint = checking
      Visit(path)
      print path
      print fingerprint
    }
  }' | while read -r path && read -r fingerprint; do
  known=
  { read -r known <"build/tidy/${path//\//,}"; } 2>/dev/null || true
  [ "$known" = "$fingerprint" ] || printf '%s\0%s\0' "$path" "$fingerprint"
done | xargs -0 -r -n 2 -P 2 bash -c 'Check "$1" "$2"' tidy.sh
