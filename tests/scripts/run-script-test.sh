#!/usr/bin/env bash
# Runs one script against a private copy of the sample project, with private preferences,
# and compares what it prints with the expected output next to it. Paths in the script are
# relative to its folder, which is copied too: projects the script opens are then outside any
# repository, as a user's would be, whatever the state of this checkout.
#   run-script-test.sh SONARIUM SAMPLE_DIR SCRIPT
set -euo pipefail
sonarium=$1 sample=$2 script=$3
expected=${script%.sonscript}.out
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$sample" "$work/project"
export XDG_CONFIG_HOME="$work/config"
# Files a script names (audio to drop, projects to open...) are found next to it.
cp -r "$(dirname "$script")" "$work/scripts"
cd "$work/scripts"
"$sonarium" "$work/project" --script "$(basename "$script")" >"$work/actual" 2>"$work/errors" || {
  echo "the script failed:"; cat "$work/errors"; exit 1; }
diff -u "$expected" "$work/actual"
