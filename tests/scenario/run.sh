#!/usr/bin/env bash
# Drives the real windows by real keys and mouse on a virtual display: run.sh BIN-FOLDER [TEST ...]
# What is looked at is what a screen reader is told, and the bytes on disk. Pictures of failures: build/scenario/.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/headless_demo_display.sh

for program in "$1/sonivo" Xvfb xdotool dbus-run-session; do
  command -v "$program" >/dev/null || { echo "run.sh: $program is not there." >&2; exit 1; }
done
SCENARIO_BIN=$(realpath "$1")
shift
export SCENARIO_BIN SCENARIO_SONG=$PWD/demo/demo.opus SCENARIO_PICTURES=$PWD/build/scenario
export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 PYTHONDONTWRITEBYTECODE=1 LC_ALL=C.UTF-8

scratch=$(mktemp -d)
finish() {
  stop_display
  rm -rf "$scratch"
}
trap finish EXIT
start_display "$scratch"
export XDG_RUNTIME_DIR=$scratch/runtime
mkdir -m 700 "$XDG_RUNTIME_DIR"
cd tests/scenario
[ $# -gt 0 ] || set -- discover
# Debian's own interpreter: the modules for the accessibility tree come as packages of it.
dbus-run-session -- /usr/bin/python3 -m unittest "$@" -v 2> >(grep -v -e '^dbus-daemon' -e '^SpiRegistry' -e '^X connection' -e '^XIO' -e 'after 0 requests' >&2)
