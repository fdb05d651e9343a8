#!/usr/bin/env bash
# Drives the real windows by real keys and mouse through every command: run.sh BIN-FOLDER [TEST ...]
# Checks what a screen reader gets, and the bytes on disk. Pictures of failures: build/scenario/.
set -euo pipefail
bin=$(realpath "$1")
shift
[ $# -gt 0 ] || set -- discover
# Debian's own interpreter: the accessibility modules are packages of it.
exec "$(dirname "$0")/on_stage.sh" "$bin" /usr/bin/python3 -m unittest "$@" -v
