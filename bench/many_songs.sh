#!/usr/bin/env bash
# How long the player's window does not answer while 10,000 songs come into its list: bench/many_songs.sh BIN-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
PYTHONPATH=$PWD/tests/scenario exec tests/scenario/on_stage.sh "$1" /usr/bin/python3 "$PWD/bench/many_songs.py"
