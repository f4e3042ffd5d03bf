#!/usr/bin/env bash
# Runs bxvbwiz and checks the exit codes, the messages, and that nothing is written that must not be.
# usage: usage_test.sh BXVBWIZ MAKEPE
set -uo pipefail
run=("$1")
[[ $1 != *.exe ]] || run=("$(cd "$(dirname "$0")/../.." && pwd)/scripts/wine.sh" "$1")
makepe=$2
unset BXVBWIZ_MACHINE
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
failures=0

Fail() {
  echo "FAILED: $*"
  failures=$((failures + 1))
}

# Expect RULE CODE TEXT ARGUMENT...: runs the program; its output and messages together must contain TEXT.
Expect() {
  local rule=$1 code=$2 text=$3 actual=0
  shift 3
  timeout 30 "${run[@]}" "$@" >output 2>messages </dev/null || actual=$?
  [ "$actual" -eq "$code" ] || Fail "$rule: exit code $actual instead of $code"
  grep -qF -- "$text" output messages || Fail "$rule: \"$text\" is missing in: $(cat output messages)"
}

Unchanged() {  # Unchanged RULE
  diff -r before machine >difference || Fail "$1: $(cat difference)"
}

# ---- usage
Expect "the version is printed" 0 "bxvbwiz " --version
Expect "help names every command" 0 "inspect" --help
for words in "" "help" "/?" "machine -?" "analyse" "explain" "generate" "check" "capture" "inspect" "machine new" "machine register" \
  "machine check"; do
  Expect "help is printed: $words" 0 "Exit codes: 0" $words --help
  [ "$(wc -L <output)" -le 100 ] || Fail "the help of \"$words\" is at most 100 columns wide"
  [[ $words != [a-z]* || $words == help ]] || grep -q '^Example: bxvbwiz ' output || Fail "the help of \"$words\" has an example"
done
Expect "no command is wrong usage" 2 "A command is missing" --json
Expect "a command that is nearly right is suggested" 2 "There is no command 'analise'. Did you mean 'analyse'?" analise X
Expect "the commands are named" 2 "There are: new, register, check." machine list
Expect "an option that is nearly right is suggested" 2 "has no option '--jason'. Did you mean '--json'?" --jason analyse X
Expect "an option is of its command" 2 "bxvbwiz inspect has no option '--rebuild'." --rebuild inspect X
Expect "unexpected words keep their order" 2 "Not expected: c, d." explain a.vbp b -- c d
Expect "options may precede the command" 1 '"command": "inspect"' --json inspect none.dll
Expect "a path may be in quotes" 2 "none: the machine folder" analyze x.vbp --machine '"none"'
Expect "a name may be that of a command" 2 "none" explain x.vbp check --machine none
Expect "a project is required" 2 "PROJECT" generate
Expect "an explanation needs a name" 2 "NAME" explain x.vbp
Expect "an empty name is wrong usage" 2 "empty" explain x.vbp ''
Expect "wrong usage is one JSON document, too" 2 '"exitCode": 2' inspect --json
Expect "an unknown option is wrong usage" 2 "--colour" analyse x.vbp --colour
Expect "--yes and --no exclude each other" 2 "excludes" analyse x.vbp --yes --no
Expect "--quiet and --verbose exclude each other" 2 "excludes" analyse x.vbp --quiet --verbose
Expect "standard output is for one of both" 2 "--html" analyse x.vbp --html - --json
Expect "an answer is one to a question" 2 "the questions are 2, 1037, 1091, 1095" analyse x.vbp --answer 1046=ok
Expect "an answer is a button of the question" 2 "only retry/cancel" analyse x.vbp --answer 2=yes
Expect "an answer names a component" 2 "not the number" analyse x.vbp --answer 1095:=yes
Expect "a question may have no component" 2 "not about a component" analyse x.vbp --answer 1091:a.ocx=yes
Expect "a message has one answer" 2 "already has an answer" analyse x.vbp --answer 1095:A.ocx=yes --answer 1095:a.OCX=NO
Expect "a text is one line" 2 "control character" analyse x.vbp --app-type $'a\nGUID=b'
Expect "an empty text is wrong usage" 2 "empty" analyse x.vbp --company ''
for words in "machine new" "machine check" "machine register machine" "analyse" "generate x.vbp --machine" \
  "capture x.vbp --to" "check x.vbp" "inspect"; do
  Expect "an empty name is wrong usage: $words" 2 "empty" $words ''
done
Expect "a drive has a letter" 2 "a drive's letter" analyse x.vbp --drive 1=.
Expect "a drive has a folder" 2 "a drive's letter" analyse x.vbp --drive P=
Expect "a drive is given once" 2 "given twice" analyse x.vbp --drive P=. --drive p=.
Expect "a drive is one of a machine folder" 2 "--machine" analyse x.vbp --drive P=.
Expect "a name of one application is not for several" 2 "--app-name" generate x.vbp y.vbp --app-name Desk
Expect "a version of one application is not for a group" 2 "--app-version" generate x.vbg --app-version 1
Expect "an explanation is of one project" 2 "explain takes one project" explain x.VBG stdole2.tlb
Expect "--rebuild and --no-rebuild exclude each other" 2 "excludes" generate x.vbp --rebuild --no-rebuild
Expect "an empty text does not swallow what follows" 2 "empty" analyse x.vbp --app-name= --json

# ---- machine folders
[ -z "$(find . -name machine.ini)" ] || Fail "no machine folder is made of an empty name"
Expect "a machine folder is made" 0 "machine" machine new machine
Expect "a folder that is not empty is refused" 2 '"machine new"' machine new machine --json
Expect "a file is not a machine folder" 2 "empty" machine new machine/registry.reg
mkdir empty
Expect "an empty folder may be filled" 0 "empty" machine new empty
diff -r empty machine >difference || Fail "every new machine folder is the same: $(cat difference)"
if grep -qvP '\r$' machine/registry.reg machine/machine.ini; then Fail "the files of a machine have Windows line ends"; fi

project='machine/drive_c/Src/Demo.vbp'
mkdir machine/drive_c/Src
printf 'Type=Exe\r\nObject={11111111-2222-3333-4444-555555555555}#1.0#0; Gone.ocx\r\nName="Demo"\r\nExeName32="Demo.exe"\r\n' >"$project"
(cd machine/drive_c/Src && "$makepe" Demo.exe --import KERNEL32.DLL && "$makepe" Server.dll --import KERNEL32.DLL --export DllRegisterServer)
printf 'Type=Exe\r\nName="NUL"\r\nExeName32="Demo.exe"\r\n' >machine/drive_c/Src/Reserved.vbp
printf 'Type=Exe\r\nName="Unbuilt"\r\nExeName32="None.exe"\r\n' >machine/drive_c/Src/Unbuilt.vbp
cp -p "$project" machine/drive_c/Src/Other.vbp
cp -R machine before
export BXVBWIZ_MACHINE=$work/machine

# ---- runs that write nothing
Expect "an analysis ends with what is left to do" 0 "1 error." analyse "$project"
Expect "a Windows path and a path of this computer are the same" 0 "Demo File Groups" analyse 'c:\src\DEMO.vbp' --verbose
Expect "an answer in front of the project does not swallow it" 0 "1 error." analyse --answer 1095=yes "$project"
Expect "--strict fails when something is missing" 4 "Gone.ocx" analyse "$project" --strict
Expect "a look at a project starts no compiler" 0 "output-missing" analyse 'C:\Src\Unbuilt.vbp'
Expect "a compiler that is asked for is missed" 1 "_BxVbErr.txt" analyse 'C:\Src\Unbuilt.vbp' --rebuild
Expect "an unknown name is no success" 1 "does not ask for Gene.ocx" explain "$project" Gene.ocx
Expect "a library is explained by its identifier" 0 "Not in the setup" explain "$project" 11111111-2222-3333-4444-555555555555
Expect "a project outside the machine" 3 "--drive" generate "$work/messages"
Expect "a misspelt project" 3 "There is no file Dmo.vbp." generate Dmo.vbp
Expect "a failed run is one JSON document, too" 3 '"finished": false' generate "$work/messages" --json
Expect "a refused application name without the page" 2 "illegal" generate "$project" --app-name 'Desk: 2' --skip-info
Expect "a refused company" 2 "illegal" generate "$project" --company 'A/B' --skip-info
Expect "a refused name from the project is not wrong usage" 1 "--app-name" generate 'C:\Src\Reserved.vbp'
Expect "a capture needs a place" 2 "--to" capture "$project"
Expect "a capture fills no folder that is in use" 2 "not empty" capture "$project" --to before
Expect "a capture of nothing says that it is incomplete" 3 "captured0 is incomplete" capture 'C:\none.vbp' --to captured0
Expect "a capture says how it is used" 0 'generate "C:\Src\Demo.vbp" --machine captured1' capture "$project" --to captured1
Expect "a captured machine gives the same" 0 "1 error." analyse 'C:\Src\Demo.vbp' --machine captured1
Expect "several projects are captured, but for one that is lost" 3 '"C:\Src\Demo.vbp" "C:\Src\Other.vbp" --machine captured3' \
  capture "$project" none.vbp 'C:\Src\Other.vbp' --to captured3
Expect "several captured projects give the same" 0 "Projects: 2. Finished: 2. 2 errors" \
  analyse 'C:\Src\Demo.vbp' 'C:\Src\Other.vbp' --machine captured3
[ "$("${run[@]}" analyse "$project" --quiet 2>/dev/null | wc -c)" -eq 0 ] || Fail "--quiet leaves standard output empty"
"${run[@]}" analyse "$project" >/dev/full 2>/dev/null && Fail "output that cannot be written is a failure"
Unchanged "nothing is written by an analysis or a refused run"

# ---- a machine folder under version control, and drives
mkdir -p checkout/Src mounted
cp -p machine/drive_c/Src/Demo.* checkout/Src
sed -i 's/^Object=.*/Reference=*\\G{00020430-0000-0000-C000-000000000046}#2.0#0#stdole2.tlb#OLE Automation\r/' checkout/Src/Demo.vbp
sed -i 's/^Name=/Path32="\\\\server\\share\\out"\r\n&/' checkout/Src/Demo.vbp
mkdir mounted/out && cp -p checkout/Src/Demo.exe mounted/out
printf '[Shares]\r\n\\\\server\\share=../mounted\r\n' >>before/machine.ini
cp -R before clone
sed -i 's/^\[Programs\]/&\r\nC:\\Program Files\\Microsoft Visual Studio\\VB98\\VB6.EXE=none.sh/' before/machine.ini
find clone -type d -empty -delete
Expect "a machine folder that was cloned has all that is needed" 0 "has what every run needs" machine check clone
for drive in P=none P=messages Q=clone/drive_c C=checkout; do
  Expect "a drive that cannot be: $drive" 2 "--drive $drive" generate 'P:\Src\Demo.vbp' --machine clone --drive "$drive"
done
Expect "no drive lies in another" 2 "in another drive" analyse x.vbp --machine clone --drive P=. --drive Q=checkout
Expect "what is on a drive is captured" 0 "captured2" capture 'P:\Src\Demo.vbp' --machine clone --drive P=checkout --to captured2
[ ! -e "clone/drive_c/My Setups" ] || Fail "a capture makes no folder on its machine"
Expect "the data folder is made" 0 "Nothing is left" generate checkout/Src/Demo.vbp --machine clone --drive P=checkout --company Acme
Expect "a captured drive and share give the same" 0 "Nothing is left" generate 'P:\Src\Demo.vbp' --machine captured2 --company Acme
diff -rI GUID= -x Report.txt {clone,captured2}"/drive_c/My Setups" >difference || Fail "capture equals the run: $(cat difference)"
rm -r "clone/drive_c/Program Files/Borvex/VBWiz/Template"
Expect "what nobody can make is named" 1 'VBWiz\Template, which does not exist' machine check clone
Expect "a compiler that cannot run is named" 1 "none.sh" machine check before

# ---- a run that goes on failing
mv "machine/drive_c/Program Files/Borvex/VBWiz/Template/Setup.bxp" template.bxp
Expect "an unanswered question names the missing answer" 1 "--answer 2=" generate "$project"
Expect "a setup folder that was left is named" 1 'C:\My Setups\Demo-1\ was created and is incomplete' generate "$project"
Expect "Retry by option ends" 1 "--answer 2=" generate "$project" --answer 2=retry
mv template.bxp "machine/drive_c/Program Files/Borvex/VBWiz/Template/Setup.bxp"
Expect "the whole wizard" 0 'Demo-3.bxp' generate "$project"

# ---- inspect
mkfifo pipe
ln -s machine/drive_c/Src/Server.dll link.dll
Expect "a link to a file is followed" 0 "DllRegisterServer" inspect link.dll
Expect "a text file is not an executable, and not a failure" 0 "not an executable" inspect "$project"
Expect "the files beside a missing one are shown" 1 "DllRegisterServer" inspect missing.dll machine/drive_c/Src/Server.dll
Expect "a folder cannot be inspected" 1 "machine" inspect machine
Expect "a pipe is not waited for" 1 "pipe" inspect pipe

[ "$failures" -eq 0 ]
