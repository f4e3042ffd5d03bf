#!/usr/bin/env bash
# Runs the whole wizard, built with the sanitizers, on every project in trees of Visual Basic sources: each must end
# with a setup project or a message. Prints a line per project: exit code, forms, things left to do, path.
# usage: project_trees.sh FOLDER...    the folders are copied, not changed
set -euo pipefail
[ $# -gt 0 ] || { sed -n 2,5p "$0" >&2; exit 2; }
folders=()
for folder in "$@"; do folders+=("$(realpath "$folder")"); done
cd "$(dirname "$0")/.."
scripts/install.sh build tests
cmake --preset asan >/dev/null
cmake --build --preset asan --parallel 2 --target bxvbwiz >build/build.log || { tail -n 40 build/build.log; exit 1; }
bxvbwiz=$PWD/build/asan/bin/bxvbwiz
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$bxvbwiz" machine new "$work/machine" >/dev/null
source=$work/machine/drive_c/Trees
mkdir "$source"
for folder in "${folders[@]}"; do cp -rT "$folder" "$source/$(basename "$folder")"; done
projects=0
failed=0
while IFS= read -r -d '' project; do
  projects=$((projects + 1))
  code=0
  # Nothing can be compiled here. With the program in place, the wizard has no reason to.
  program=$(sed -n 's/^ExeName32="\([^"]*\)".*/\1/p' "$project" | head -n 1)
  path=$(sed -n 's/^Path32="\([^"]*\)".*/\1/p' "$project" | head -n 1 | tr '\\' /)
  if [ -n "$program" ] && mkdir -p "$(dirname "$project")/$path"; then
    printf 'MZ' >"$(dirname "$project")/$path/$program"
  fi
  timeout 60 "$bxvbwiz" generate "$project" --machine "$work/machine" --yes --answer 2=retry --strict --json \
    </dev/null >"$work/json" 2>"$work/errors" || code=$?
  forms=$(grep -ciE '^Form=' "$project" || true)
  echo "$code, $forms forms, $(grep -c '^bxvbwiz: The ' "$work/errors" || true) left to do: ${project#"$source/"}"
  if [ "$code" -gt 4 ]; then
    failed=$((failed + 1))
    cat "$work/errors"
  fi
done < <(find "$source" -type f -iname '*.vbp' -print0 | sort -z)
echo "$projects projects, $failed failed"
[ "$projects" -gt 0 ] && [ "$failed" -eq 0 ]
