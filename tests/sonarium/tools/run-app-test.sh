#!/usr/bin/env bash
# scripts/run-app (what `make run` ends with) fails, and says why, when the build is missing.
#   run-app-test.sh RUN_APP
set -u
said=$("$1" /nonexistent-build 2>&1 >/dev/null)
status=$?
[ "$status" -ne 0 ] || { echo "run-app succeeded without a build"; exit 1; }
case "$said" in
  *"the build is missing"*) ;;
  *) echo "run-app did not say why: $said"; exit 1 ;;
esac
