# Sourced by run.sh --relations: what holds for every setup project. The usual comparison, which follows, shows that
# line ends do not matter.
RunCase() {
  local machine=$folder/machine result=$folder/result
  LayOut "$machine"
  cp -R "$machine" "$folder/as-it-was"

  RunInFolder Analyse
  grep -a '^== ' "$result" | tail -n +3 >"$folder/changed" || true
  Expect "An analysis changes nothing" /dev/null "$folder/changed"

  RunInFolder "${run[@]}"
  mv "$machine" "$folder/once"
  cp -R "$folder/as-it-was" "$machine"
  RunInFolder "${run[@]}"
  Expect "A run on a copy of the machine makes the same bytes" /dev/null <(diff -r "$folder/once" "$machine" 2>&1)
  rm -r "$machine"
  cp -R "$folder/as-it-was" "$machine"

  sed -i '1!{G;h;$!d}' "$machine"/drive_c/Src/*/*.vbp  # the lines after the first one, the last of them first
  RunInFolder "${run[@]}"
  Expect "The order of the project's lines changes no list of files" \
    <(ListFiles "$(Find expected/result)") <(ListFiles "$result")

  rm -r "$machine"
  mv "$folder/as-it-was" "$machine"
  find "$machine/drive_c/Src" \( -name '*.vbp' -o -name '*.frm' \) -exec \
    perl -i -pe 's/\r?\n/("\r", "\r\n", "\n")[$. % 3]/e' {} +
  RunInFolder "${run[@]}"
  cp "$folder/output" "$folder/first-output"
  mv "$result" "$folder/first"
  RunInFolder "${run[@]}"
  Expect "A second run makes the same and leaves the first alone" <(HideNumber "$folder/first") <(HideNumber "$result")
  mv "$folder/first-output" "$folder/output"
  mv "$folder/first" "$result"
}

Analyse() {  # Analyse generate ARGUMENT...
  "${run[@]}" analyse "${@:2}"
}

Expect() {  # Expect RULE EXPECTED ACTUAL
  diff -u -a "$2" "$3" && return
  echo "${folder##*/}: $1" >&2
  failures=$((failures + 1))
}

# Prints the exit code of a result and the names in its file lists, in no order.
ListFiles() {  # ListFiles RESULT
  sed -n -e '/^== exit code/p' -e 's/^file[0-9]*=.*\\//p' "$1" | sort
}

# Prints a result without the number that sets a setup folder apart from those before it, and without the GUIDs, which
# depend on the name.
HideNumber() {  # HideNumber RESULT
  sed -E -e '/^(== |InstallRoot=)/s#-[0-9]+(/|\.bxp|\r)#\1#g' -e 's/^((Installation)?GUID=)[^\r]*/\1/' "$1"
}
