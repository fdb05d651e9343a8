#!/usr/bin/env bash
# The whole chain, from the key and from the sound to the position taken: bench/stamp_chain.sh BIN-FOLDER
# First the player asked over its protocol by a plug-in, in every format; then keys in the editor's real window.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. bench/stage.sh
set_stage display sound
make_tracks "${noise_tracks[@]}"
make_probed_player "$bin"/plugins/*
"$bin/audio_chain" --columns
for track in "${noise_tracks[@]}"; do
  "$bin/audio_chain" --player "$scratch/bin/sonivo" "$scratch/$track" 2>>"$scratch/player.log"
done

seq -f 'line %g' 200 >"$scratch/noise.lrc"
begin "$bin/sonivo" --edit "$scratch/noise.lrc" "$scratch/noise.wav"
"$bin/stamp_chain" "$scratch/noise.lrc"
