#!/usr/bin/env bash
# Runs a command on a virtual display with a session bus, where the windows tell assistive programs what they are:
# on_stage.sh BIN-FOLDER COMMAND ...   The command drives the program of that folder; it runs in this folder.
set -euo pipefail
cd "$(dirname "$0")/../.."
. scripts/headless_demo_display.sh

for program in "$1/sonivo" Xvfb xdotool dbus-run-session; do
  command -v "$program" >/dev/null || { echo "on_stage.sh: $program is not there." >&2; exit 1; }
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
# A portal of this machine would open folders itself.
export XDG_DATA_HOME=$scratch/data
mkdir -p "$XDG_DATA_HOME/dbus-1/services"
printf '[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=/bin/false\n' \
  >"$XDG_DATA_HOME/dbus-1/services/org.freedesktop.portal.Desktop.service"
cd tests/scenario
# What the bus and its services say of themselves helps nobody.
dbus-run-session -- "$@" 2> >(grep --line-buffered -v -e '^dbus-daemon' -e '^SpiRegistry' -e '^X connection' -e '^XIO' -e 'after 0 requests' >&2)
