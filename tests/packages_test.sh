#!/usr/bin/env bash
# Packs what a build tree has, and uses the packages as a user would: packages_test.sh BUILD-FOLDER MAKEPE
# The Debian package is installed in a root of its own, run on the demo project and removed. The ZIP archive is unpacked
# in a fresh Wine prefix, registered, driven by a script host and unregistered. Neither leaves anything.
set -Eeuo pipefail
trap 'echo "packages_test.sh: line $LINENO failed" >&2' ERR
build=$1
makepe=$2
repository=$(cd "$(dirname "$0")/.." && pwd)
work=$(mktemp -d)
export BXVBWIZ_WINEPREFIX=$work/wine
trap '"$repository/scripts/wine.sh" --stop; rm -rf "$work"' EXIT
cpack --config "$build/CPackConfig.cmake" -B "$work/packages" >"$work/log" 2>&1 || { cat "$work/log" >&2; exit 1; }

# Lays out the demo's machine folder for a bxvbwiz of this computer.
LayOut() {  # LayOut BXVBWIZ
  mkdir "$work/programs"
  ln -s "$1" "$work/programs/bxvbwiz"
  ln -s "$makepe" "$work/programs/makepe"
  "$repository/demo/lay_out.sh" "$work/machine" "$work/programs" >/dev/null
}

TestDebianPackage() {
  local root=$work/root
  mkdir -p "$root/var/lib/dpkg/"{info,updates} && touch "$root/var/lib/dpkg/"{status,available}
  Dpkg() { dpkg --root="$root" --force-not-root --force-depends --force-script-chrootless --log=/dev/null "$@" >"$work/log" 2>&1; }
  Dpkg --install "$work"/packages/*.deb
  LayOut "$root/usr/bin/bxvbwiz"
  "$root/usr/bin/bxvbwiz" generate 'C:\Projects\OrderDesk\OrderDesk.vbp' --machine "$work/machine" \
    --answer 1095=yes --quiet 2>/dev/null
  test -s "$work/machine/drive_c/My Setups/OrderDesk/OrderDesk.bxp"
  # Not in the installed root: small systems leave manuals out.
  tar -xzf "$work"/packages/*.tar.gz -C "$work" --strip-components=1
  grep -q '^\.SS bxvbwiz .*generate' "$work/share/man/man1/bxvbwiz.1"
  bash -n "$work/share/bash-completion/completions/bxvbwiz"
  "$work/bin/bxvbwiz" --version | grep -q '^bxvbwiz '
  Dpkg --remove bxvbwiz
  [ ! -e "$root/usr" ]
}

# The names of the registered classes and libraries of this product.
ListRegistered() {
  grep -aiE 'bx6vbwiz|VB Project Wizard' "$BXVBWIZ_WINEPREFIX"/*.reg | sort || true
}

TestArchive() {
  local wine=$repository/scripts/wine.sh folder=$BXVBWIZ_WINEPREFIX/drive_c/Wizard
  "$wine" --whole wineboot
  (cd "$BXVBWIZ_WINEPREFIX/drive_c" && cmake -E tar xf "$work"/packages/*.zip && mv bxvbwiz-* Wizard)
  "$wine" --whole cmd /c 'C:\Wizard\register.cmd' | grep -q '^Registered C:\\Wizard\\Bx6vbwiz.dll'
  printf '%s\r\n' 'Set run = CreateObject("BX6VBWiz.Application")' 'run.ID = "0007"' \
    'WScript.Echo run.ID & " " & run.StillExecuting' >"$folder/../host.vbs"
  "$wine" --whole 'C:\windows\syswow64\cscript.exe' //nologo 'C:\host.vbs' | tr -d '\r' | grep -qx '0007 True'
  "$wine" --whole 'C:\Wizard\bxvbwiz.exe' --version | grep -q '^bxvbwiz '
  "$wine" --whole cmd /c 'C:\Wizard\unregister.cmd' | grep -q '^Removed'
  "$wine" --stop
  [ -z "$(ListRegistered)" ] || { ListRegistered; exit 1; }
}

if compgen -G "$work/packages/*.zip" >/dev/null; then TestArchive; else TestDebianPackage; fi
