#!/usr/bin/env bash
# Takes the pictures of the help page and of the README from the real windows: take_pictures.sh BIN-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/headless_demo_sound.sh
sound=$(mktemp -d)
trap 'stop_sound; rm -rf "$sound"' EXIT
start_sound "$sound"
env -u XDG_CACHE_HOME tests/scenario/on_stage.sh "$(realpath "$1")" /usr/bin/python3 "$PWD/scripts/take_pictures.py" "$PWD"
