#!/usr/bin/env bash
# Compares what "machine register" reads from files with what Wine registers of them: each type library of a fresh 32-bit
# prefix, with its version, language, file, description and flags. Prints "N of N equal"; fails when one differs.
# usage: compare_typelibs.sh      BXVBWIZ names the program of this computer (default: that of build/native)
set -euo pipefail
cd "$(dirname "$0")/.."
bxvbwiz=${BXVBWIZ:-build/native/bin/bxvbwiz}
work=$(mktemp -d)
export BXVBWIZ_WINEPREFIX=$work/wine
trap 'scripts/wine.sh --stop; rm -rf "$work"' EXIT
scripts/wine.sh --whole 'C:\windows\syswow64\reg.exe' export 'HKCR\TypeLib' "Z:$work/theirs.reg" >"$work/log"
mkdir "$work/machine"
echo REGEDIT4 >"$work/machine/registry.reg"

# Prints a line for each type library of a registry file. To a 32-bit program, SysWOW64 is the system folder.
List() {
  tr -d '\r' | sed 's/\\\\/\\/g' | awk -F '\\' -v OFS='\t' '
    /^\[/ { language = $(NF - 1); level = tolower($NF); key = toupper($0); sub(/.*\\TYPELIB\\/, "", key); next }
    !/^@=/ || !/"$/ { next }
    { value = substr($0, 4, length($0) - 4) }
    key ~ /^\{[^\\]*\}\\[0-9A-F.]*\]$/ { sub(/\]/, "", key); description[key] = value }
    level == "flags]" { sub(/\\FLAGS\]/, "", key); flags[key] = value }
    level == "win32]" {
      sub(/\\[0-9A-F]*\\WIN32\]/, "", key)
      sub(/\\system32\\/, "\\syswow64\\", value)
      libraries[key OFS language OFS value] = key
    }
    END { for (one in libraries) print one, description[libraries[one]], flags[libraries[one]] }' | LC_ALL=C sort
}
iconv -f UTF-16 -t UTF-8 "$work/theirs.reg" | List >"$work/theirs"
# A path may end in the number of a resource.
mapfile -t files < <(cut -f 3 "$work/theirs" | sort -u |
  sed -E -e 's/\\[0-9]+$//' -e "s#^C:#$BXVBWIZ_WINEPREFIX/drive_c#" -e 's#\\#/#g')
"$bxvbwiz" machine register "$work/machine" "${files[@]}" --drive "C=$BXVBWIZ_WINEPREFIX/drive_c" >"$work/log"
List <"$work/machine/registry.reg" >"$work/ours"
diff "$work/theirs" "$work/ours" || true
equal=$(LC_ALL=C comm -12 "$work/theirs" "$work/ours" | wc -l)
echo "$equal of $(wc -l <"$work/theirs") equal"
[ "$equal" -gt 0 ] && cmp -s "$work/theirs" "$work/ours"
