# Sourced by the script tests: copy_sample FROM TO copies a project folder without the lock file
# that another test, holding the same project open at this moment, may have in it.
copy_sample() {
  mkdir -p "$2"
  (cd "$1" && find . -name .sonarium.lock -prune -o -type f -print0 | xargs -0 cp --parents -t "$2")
}
