#!/usr/bin/env bash
# Runs one script against a private copy of the sample project, with private preferences,
# and compares what it prints with the expected output next to it. Paths in the script are
# relative to its folder.
#   run-script-test.sh SONARIUM SAMPLE_DIR SCRIPT
set -euo pipefail
sonarium=$1 sample=$2 script=$3
expected=${script%.sonscript}.out
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$sample" "$work/project"
export XDG_CONFIG_HOME="$work/config"
# Files a script names (audio to drop...) are found next to it.
cd "$(dirname "$script")"
"$sonarium" "$work/project" --script "$script" >"$work/actual" 2>"$work/errors" || {
  echo "the script failed:"; cat "$work/errors"; exit 1; }
diff -u "$expected" "$work/actual"
