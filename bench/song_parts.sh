#!/usr/bin/env bash
# How exactly parts of a song are played, and where clicks are heard: bench/song_parts.sh BIN-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. bench/stage.sh
set_stage display sound
"$bin/song_parts" "$scratch"
make_tracks noise.wav
seq -f '[00:%02g:00]line' 2 2 58 >"$scratch/noise.lrc"
begin "$bin/sonivo" --paused --edit "$scratch/noise.lrc" "$scratch/noise.wav"
"$bin/listen_chain" "$scratch/noise.lrc"
