#!/usr/bin/env bash
# Drives the real windows by real keys and mouse through every command: run.sh BIN-FOLDER [TEST ...]
# Checks what a screen reader gets, and the bytes on disk. Pictures of failures: build/scenario/.
# Without a TEST, each file of tests has a display and a session bus of its own; SCENARIO_JOBS of them run at a time.
set -euo pipefail
bin=$(realpath "$1")
folder=$(realpath "$(dirname "$0")")
shift

# Debian's own interpreter: the accessibility modules are packages of it.
run_tests() { "$folder/on_stage.sh" "$bin" /usr/bin/python3 -m unittest "$@" -v; }
if [ $# -gt 0 ]; then run_tests "$@"; exit; fi

logs=$(mktemp -d)
trap 'rm -rf "$logs"' EXIT
run_file() { # FILE: its whole output in one piece, once it has ended
  local status=0
  run_tests "$(basename "$1" .py)" >"$logs/$1" 2>&1 || status=1
  cat "$logs/$1"
  return $status
}
export -f run_tests run_file
export bin folder logs
# The longest first: that of a sound server that hangs, then the largest.
cd "$folder"
{ echo test_sound.py; ls -S test_*.py | grep -v '^test_sound.py$'; } | xargs -P "${SCENARIO_JOBS:-1}" -I{} bash -c 'run_file {}'
