#!/usr/bin/env bash
# Runs the VBScript host against a server that it registers for the time.
# usage: vbscript_test.sh WINE SERVER.dll
set -euo pipefail
wine=$1
server=Z:${2//\//\\}
script=Z:$(cd "$(dirname "$0")" && pwd)/host.vbs
# The system folder that has the server's size.
system='C:\windows\system32'
[[ $2 != */win32/* ]] || system='C:\windows\syswow64'

CleanUp() {
  "$wine" "$system\\regsvr32.exe" /s /u "$server" || true
  "$wine" reg delete 'HKLM\SOFTWARE\Borvex' /f >/dev/null 2>&1 || true
  "$wine" reg delete 'HKLM\SOFTWARE\Wow6432Node\Borvex' /f >/dev/null 2>&1 || true
  "$wine" reg delete 'HKCU\SOFTWARE\Borvex' /f >/dev/null 2>&1 || true
  "$wine" cmd /c 'rmdir /s /q C:\bxvbwiz-script' >/dev/null 2>&1 || true
}
trap CleanUp EXIT
CleanUp
"$wine" "$system\\regsvr32.exe" /s "$server"
code=0
BXVBWIZ_KEYS=nno "$wine" "$system\\cscript.exe" //nologo "${script//\//\\}" || code=$?
[ "$code" -eq 42 ] || { echo "vbscript_test.sh: the script ended with $code" >&2; exit 1; }
