# Sourced by run.sh when bxvbwiz is a Windows program: runs the cases on Wine's own drive and registry, or on a machine
# folder if they name one. BXVBWIZ_WINEPREFIX names a prefix that is used for nothing else.
run=("$repository/scripts/wine.sh" "$bxvbwiz")
prefix=$BXVBWIZ_WINEPREFIX
drive=$prefix/drive_c
case $(od -An -tx2 -j$(($(od -An -tu4 -j60 -N4 "$bxvbwiz") + 4)) -N2 "$bxvbwiz") in
  *014c) systemFolder=windows/syswow64 ;;  # what a 32-bit program sees as system32
  *) systemFolder=windows/system32 ;;
esac

# Windows gives a new GUID each time. A MONIKER holds a GUID too, but always the same.
masks+=(-e 's/^((Installation)?GUID=)[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}/\1<a new GUID>/')

# A 32-bit and a 64-bit program see different views of the registry. To the 32-bit loader, system32 is the 32-bit
# folder.
ImportRegistry() {
  if [ "$systemFolder" = windows/syswow64 ]; then
    "${run[0]}" 'C:\windows\syswow64\reg.exe' import "Z:$1"
  else
    WINEPREFIX=$prefix WINEDEBUG=-all /usr/lib/wine/wine64 'C:\windows\system32\reg.exe' import "Z:$1"
  fi >/dev/null 2>&1
}

NotePristine() {  # records what the new prefix contains
  [ -f "$prefix/pristine" ] || {
    "${run[0]}" cmd /c exit
    (cd "$drive" && find . | sort) >"$prefix/pristine"
    mkdir -p "$prefix/replaced"
  }
}

# Makes drive D: that of the machine folder; none when it has none.
LayOutDriveD() {  # LayOutDriveD MACHINE
  rm -rf "$prefix/drive_d" "$prefix/dosdevices/d:"
  [ ! -d "$1/drive_d" ] || { cp -Rp "$1/drive_d" "$prefix" && ln -s ../drive_d "$prefix/dosdevices/d:"; }
}

# Removes everything that is not the prefix's own, and puts back what was replaced.
CleanDrive() {
  (cd "$drive" && find . | sort | comm -13 "$prefix/pristine" - | sort -r | xargs -r -d '\n' rm -df)
  cp -R "$prefix/replaced/." "$drive"
}

# Lays the machine folder's drive over Wine's, replacing Wine's own files, except the kernel, which no case reads.
LayOverDrive() {  # LayOverDrive MACHINE
  local existing
  (cd "$1/drive_c" && find . -type f ! -name KERNEL32.DLL) | sed "s#^./windows/system32#./$systemFolder#" |
    awk '{ name = tolower($0) } NR == FNR { wine[name] = $0; next } name in wine { print wine[name] }' \
      "$prefix/pristine" - |
    while IFS= read -r existing; do
      mkdir -p "$prefix/replaced/${existing%/*}"
      mv "$drive/$existing" "$prefix/replaced/$existing"
    done
  tar c -C "$1/drive_c" --exclude KERNEL32.DLL . |
    tar x -C "$drive" --transform "s#^./windows/system32#./$systemFolder#"
}

# Makes Wine's registry that of the case, without what the case before it has left. Each import starts a program.
LayOverRegistry() {  # LayOverRegistry MACHINE
  Removal "$1/registry.reg" >"$folder/removal"
  touch "$prefix/left"
  { printf 'REGEDIT4\r\n\r\n'; cat "$prefix/left" "$folder/removal"; tail -n +2 "$1/registry.reg"; } >"$folder/all.reg"
  cat "$folder/removal" >>"$prefix/left"  # both stand there should the import not end
  ImportRegistry "$folder/all.reg"
  cp "$folder/removal" "$prefix/left"
}

# Prints the lines of a registry file that remove the keys of FILE, and type libraries with all their versions.
Removal() {  # Removal FILE
  sed -nE 's/\r$//; s/^\[-?(.*)\]$/\1/p' "$1" | sed -E 's/(\\TypeLib\\\{[^}]*\}).*/\1/' |
    grep -vi 'Windows\\CurrentVersion$' | sort -u | sed 's/.*/[-&]\r/'
}

# Makes the machine folder as it would be after the run: its files and all new ones, as they are on Wine's drive.
TakeMachine() {  # TakeMachine MACHINE-BEFORE OUT
  cp -R "$1" "$2"
  find "$2/drive_c" -type f ! -name KERNEL32.DLL -delete
  {
    (cd "$drive" && find . | sort | comm -13 "$prefix/pristine" -)
    (cd "$1/drive_c" && find . -type f | sed "s#^./windows/system32#./$systemFolder#")
  } | sort -u | tar c -C "$drive" --no-recursion --ignore-failed-read -T - 2>/dev/null |
    tar x -C "$2/drive_c" --transform "s#^./$systemFolder#./windows/system32#"
  [ ! -d "$2/drive_d" ] || { rm -r "$2/drive_d" && cp -Rp "$prefix/drive_d" "$2"; }
}

RunCase() {
  local options locale
  ReadOptions "$folder/machine" C:
  if [[ ${options[*]} == *--machine* || ${options[0]} == machine ]]; then
    LayOut "$folder/machine"
    RunInFolder "${run[@]}"
    sed -i 's#Z:<machine>#<machine>#' "$folder/output" "$folder/result"
  elif PutOnDrive; then
    if [ "$mode" = --captured ]; then
      Capture "Z:$folder/machine" InWine
      rm -rf "$folder/before"
      RunInFolder "$native"
    else
      RunOnDrive
    fi
  fi
}

# Makes Wine's drive and registry those of the case. If its locale cannot be made, it fails and copies the expectation
# as the result.
PutOnDrive() {
  local before=$folder/before
  LayOut "$before"
  locale=C.UTF-8
  if grep -q '^CodePage=932' "$before/machine.ini"; then
    locale=ja_JP.UTF-8  # Wine takes its code page from the locale
    mkdir -p "$work/locale"
    localedef -i ja_JP -f UTF-8 "$work/locale/$locale" >/dev/null 2>&1 || {
      echo "${folder##*/}: left out: the Japanese locale cannot be made here (Debian package locales)"
      cp "$(Find expected/result)" "$(Find expected/output)" "$folder"
      return 1
    }
  fi
  NotePristine
  CleanDrive
  LayOverDrive "$before"
  LayOutDriveD "$before"
  [ ! -f "$before/vb6.exe" ] || {
    cp "$before/vb6.exe" "$drive/Program Files/VB98/VB6.EXE"
    cp "$before/vb6.txt" "$drive/Program Files/VB98/vb6.txt"
  }
  LayOverRegistry "$before"
}

InWine() {  # InWine ARGUMENT...
  unset BXVBWIZ_MACHINE SOURCE_DATE_EPOCH
  LOCPATH=$work/locale LC_ALL=$locale "${run[@]}" "$@"
}

RunOnDrive() {
  local code=0
  (cd "$folder" && InWine "${options[@]}" >output 2>messages </dev/null) || code=$?
  TakeMachine "$folder/before" "$folder/machine"
  [ ! -f "$folder/before/vb6.exe" ] || {
    cp -p "$folder/before/drive_c/Program Files/VB98/VB6.EXE" "$folder/machine/drive_c/Program Files/VB98/VB6.EXE"
    rm "$folder/machine/drive_c/Program Files/VB98/vb6.txt"
  }
  WriteResult "$code" "$folder/before"
  # Here a Windows path is also a path of this computer.
  sed -E -i -e 's#"C:/#"<machine>/drive_c/#' -e '/^Setup project: C:/{s#C:#<machine>/drive_c#;s#\\#/#g}' \
    -e 's#("projectFileHere": ")C:((\\\\[^"\\]*)*)"#\1<machine>/drive_c\2"#' \
    -e '/"projectFileHere"/s#\\\\#/#g' -e 's#^[0-9]+/[0-9]+/[0-9]+ [0-9:]+( [AP]M)?#<the present time>#' \
    "$folder/output" "$folder/result"
}
