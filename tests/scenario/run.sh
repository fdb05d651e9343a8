#!/usr/bin/env bash
# Drives the real windows by real keys and mouse through every command: run.sh BIN-FOLDER [TEST ...]
# What is looked at is what a screen reader is told, and the bytes on disk. Pictures of failures: build/scenario/.
set -euo pipefail
bin=$(realpath "$1")
shift
[ $# -gt 0 ] || set -- discover
# Debian's own interpreter: the modules that read what a screen reader is told are packages of it.
exec "$(dirname "$0")/on_stage.sh" "$bin" /usr/bin/python3 -m unittest "$@" -v
