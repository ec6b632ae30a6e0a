#!/usr/bin/env bash
# Runs one script against a private copy of the sample project, with private preferences,
# and compares what it prints with the expected output next to it. Paths in the script are
# relative to its folder, which is copied too (with the audio files of MAKE_AUDIO written there as
# "generated/"): projects the script opens are then outside any repository, as a user's would be,
# whatever the state of this checkout. The run's private folder is printed as WORK.
#   run-script-test.sh SONARIUM SAMPLE_DIR SCRIPT [MAKE_AUDIO]
set -euo pipefail
sonarium=$1 sample=$2 script=$3 make_audio=${4:-}
expected=${script%.sonscript}.out
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
. "$(dirname "$0")/copy-sample.sh"
copy_sample "$sample" "$work/project"
export XDG_CONFIG_HOME="$work/config"
# Files a script names (audio to drop or import, projects to open...) are found next to it.
cp -r "$(dirname "$script")/." "$work/run"
[ -z "$make_audio" ] || "$make_audio" "$work/run/generated"
cd "$work/run"
"$sonarium" "$work/project" --script "$(basename "$script")" >"$work/actual" 2>"$work/errors" || {
  echo "the script failed:"; cat "$work/errors"; exit 1; }
sed "s|$work|WORK|g" "$work/actual" | diff -u "$expected" -
