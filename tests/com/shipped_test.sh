#!/usr/bin/env bash
# Checks that the modules that users get have icon, version and manifest, name the Windows that they need, import only
# what every Windows has, and hold no symbols. usage: shipped_test.sh OBJDUMP MODULE...
set -uo pipefail
objdump=$1
shift
failures=0
Fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}
for module in "$@"; do
  headers=$("$objdump" -p "$module")
  for type in 0e 10 18; do  # RT_GROUP_ICON, RT_VERSION, RT_MANIFEST of winuser.h, at the resources' first level
    grep -qE "^[0-9a-f]{3}   Entry: ID: 0x0000$type," <<<"$headers" || Fail "$module has no resource of the type $type"
  done
  for text in asInvoker 8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a Common-Controls dpiAware; do
    grep -qa "$text" "$module" || Fail "the manifest of $module lacks $text"
  done
  grep -qE '^MajorSubsystemVersion[[:space:]]+6$' <<<"$headers" || Fail "$module does not say that it needs Windows Vista"
  imports=$(sed -nE 's/^[[:space:]]*DLL Name: (.*)\.dll$/\1/Ip' <<<"$headers" | tr '[:lower:]' '[:upper:]')
  foreign=$(grep -vxE 'ADVAPI32|COMCTL32|COMDLG32|GDI32|KERNEL32|MSVCRT|OLE32|OLEAUT32|SHELL32|USER32' <<<"$imports")
  [ -z "$foreign" ] || Fail "$module needs $foreign"
  "$objdump" -t "$module" | grep -q '^no symbols' || Fail "$module holds symbols"
done
exit $((failures > 0))
