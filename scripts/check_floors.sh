#!/usr/bin/env bash
# Checks, file by file, that each room of src includes only the rooms that it may see, that no modules (a header and its
# source) include each other in a circle, that the headers of one system are included only in folders named win32, posix
# or com, and those of libraries only in cli.
# usage: check_floors.sh [SRC]; prints every fault and fails if there is one.
set -euo pipefail
src=${1:-$(dirname "$0")/../src}
cd "$src"

includes=$(mktemp)
trap 'rm -f "$includes"' EXIT
# file, line, kind (" or <), name
grep -rnE '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<]' --include='*.h' --include='*.cpp' --include='*.inc' --include='*.rc' . |
  sed -E 's/^\.\/([^:]*):([0-9]+):[[:space:]]*#[[:space:]]*include[[:space:]]*(["<])([^">]*)[">].*/\1\t\2\t\3\t\4/' >"$includes" || true

faults=$(
  awk -F'\t' '
    # A room, and the rooms that it may see besides itself. A room with a slash is not part of the one before the slash.
    function Room(name, seen) { sees[name] = " " name " " seen " " }
    BEGIN {
      Room("text", "")
      Room("platform", "text")
      floors = "text platform"
      count = split("support sysinfo project setupgen analysis ui wizard", names, " ")
      for (i = 1; i <= count; i++) { Room(names[i], floors); floors = floors " " names[i] }
      # The answers to the seam know nothing of the house; only views and programs know them.
      Room("machine/host", "text platform")
      Room("machine/host/posix", "text platform machine/host")
      Room("text/win32", "text")
      Room("platform/win32", "text text/win32 platform")
      Room("machine/host/win32", "text platform machine/host text/win32 platform/win32")
      Room("machine", "text platform machine/host")
      Room("win32", "text platform text/win32 platform/win32")
      Room("ui/win32", floors " text/win32 win32")
      Room("com", floors " text/win32 ui/win32 win32")
      sub(/ ui /, " ", floors)  # the console is a view of its own
      Room("cli", floors " machine")
      Room("cli/posix", floors " machine cli")
      Room("cli/win32", floors " text/win32 machine cli win32")
    }
    function RoomOf(path) {
      while (sub(/\/[^\/]*$/, "", path)) if (path in sees) return path
      return ""
    }
    function Fault(text) { print $1 ":" $2 ": " text }
    { room = RoomOf($1) }
    room == "" { Fault("is in no room"); next }
    $3 == "\"" && $1 == $4 { Fault("includes itself") }
    # Foreign headers are included with <>; the description of the automation server is generated.
    $3 == "\"" && $4 !~ /\/|\.tlb$/ { Fault("\"" $4 "\" does not begin with a room"); next }
    $4 ~ /\.\./ { Fault("\"" $4 "\" leads out of its folder"); next }
    ($3 == "\"" || RoomOf($4) != "") && index(sees[room], " " RoomOf($4) " ") == 0 { Fault(room " may not see \"" $4 "\"") }
    $3 == "<" && RoomOf($4) == "" && $4 ~ /\.h$/ && $1 !~ /(^|\/)(win32|posix|com)\// {
      Fault("<" $4 "> belongs in a folder of one system (win32, posix, com)")
    }
    $4 ~ /^(CLI|nlohmann)\// && room != "cli" { Fault("<" $4 "> belongs in cli") }
  ' "$includes"
  # tsort names the modules of a circle.
  awk -F'\t' '
    function Module(path) { sub(/\.[a-z]+$/, "", path); return path }
    $3 == "\"" && Module($1) != Module($4) { print Module($1), Module($4) }
  ' "$includes" | { tsort 2>&1 >/dev/null || true; } |
    sed -E 's/^tsort: -: input contains a loop:$/modules that include each other in a circle:/; s/^tsort: /  /'
)
[ -z "$faults" ] && exit 0
echo "$faults"
exit 1
