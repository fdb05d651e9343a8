#!/usr/bin/env bash
# How exactly parts of a song are played, and where clicks are heard: bench/song_parts.sh BIN-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. bench/stage.sh
set_stage sound
"$bin/song_parts" "$scratch"
