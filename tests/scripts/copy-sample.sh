# Sourced by the script tests: copy_sample FROM TO copies a project folder without the lock file
# that another test, holding the same project open at this moment, may have in it.
copy_sample() {
  mkdir -p "$2"
  tar -C "$1" --exclude=.sonarium.lock -cf - . | tar -C "$2" -xf -
}
