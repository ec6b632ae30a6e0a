#!/usr/bin/env bash
# The command line and the running program around a script: bad --script arguments, a damaged
# preferences file told once on standard error, and two instances on one project, the second
# read-only while the first runs and able to save once it has gone.
#   run-instances-test.sh SONARIUM SAMPLE_DIR
set -uo pipefail
sonarium=$1 sample=$2
work=$(mktemp -d)
trap 'exec 3>&- 2>/dev/null; wait; rm -rf "$work"' EXIT
. "$(dirname "$0")/copy-sample.sh"
copy_sample "$sample" "$work/project"
fail() { echo "FAILED: $*"; [ -f "$work/err" ] && cat "$work/err"; exit 1; }

# sonarium exits with CODE and says MESSAGE on standard error.
expect_error() {
  local code=$1 message=$2
  shift 2
  "$sonarium" "$@" </dev/null >"$work/out" 2>"$work/err"
  local got=$?
  [ "$got" -eq "$code" ] || fail "exit $got instead of $code for: $*"
  grep -qF -- "$message" "$work/err" || fail "no \"$message\" for: $*"
}
expect_error 2 "--script needs a file name, or - for standard input" "$work/project" --script ""
expect_error 2 "the script $work is a folder, not a file" "$work/project" --script "$work"

mkdir -p "$work/settings"
echo '{ "version": 1, "sections": ' >"$work/settings/preferences.json"
echo 'print tree' | "$sonarium" "$work/project" --settings "$work/settings" --script - >/dev/null 2>"$work/err" ||
  fail "a damaged preferences file stopped the run"
[ "$(grep -c '^sonarium: preferences: .*preferences.json: .*moved aside to .*corrupt-1' "$work/err")" -eq 1 ] ||
  fail "the damaged preferences were not told exactly once"

# The first instance holds the project while its script (read from a pipe) is open.
mkfifo "$work/first.script"
"$sonarium" "$work/project" --script - <"$work/first.script" >"$work/first.out" 2>"$work/first.err" &
exec 3>"$work/first.script"
echo 'print selection' >&3
for _ in $(seq 200); do grep -q '^selection' "$work/first.out" 2>/dev/null && break; sleep 0.05; done
grep -q '^selection' "$work/first.out" || fail "the first instance did not start"

printf 'host rename AudioObjects/World/Props Mine\nsave\n' >"$work/second.script"
expect_error 1 "second.script:2: the project could not be saved" "$work/project" --script "$work/second.script"
grep -qF "is open in another instance of Sonarium (process $!" "$work/err" || fail "the second instance did not say why"
grep -qF "opened read-only" "$work/out" || fail "the save's problem was not printed"
[ -f "$work/project/AudioObjects/World/Props.swu" ] && [ ! -e "$work/project/AudioObjects/World/Mine.swu" ] ||
  fail "the read-only instance changed the project"

exec 3>&-
wait $! || fail "the first instance failed"
[ ! -e "$work/project/.sonarium.lock" ] || fail "the lock file stayed after the first instance ended"
"$sonarium" "$work/project" --script "$work/second.script" >"$work/out" 2>"$work/err" || fail "saving after the first instance ended"
[ -f "$work/project/AudioObjects/World/Mine.swu" ] || fail "the save after the first instance did not happen"
echo "ok"
