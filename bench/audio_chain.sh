#!/usr/bin/env bash
# How far the play position is from the sound put out, in every format and condition: bench/audio_chain.sh BIN-FOLDER
# [--library]. Reported minus heard, in ms of the track. Takes ten minutes of real time, with the library's own figures
# twenty.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
chain=$bin/audio_chain
. bench/stage.sh
set_stage sound

make_tracks "${noise_tracks[@]}"
"$chain" --clicks "$scratch/clicks.wav"
ffmpeg -v error -i "$scratch/clicks.wav" -ar 44100 "$scratch/clicks-44100.wav"
ffmpeg -v error -i "$scratch/clicks.wav" -c:a libvorbis -q:a 6 "$scratch/clicks.ogg"

"$chain" --columns
for track in "${noise_tracks[@]}"; do
  for condition in play seeks paused; do "$chain" engine "$condition" "$scratch/$track"; done
done
for condition in play@0.75 seeks@0.75; do "$chain" engine "$condition" "$scratch/clicks.wav"; done
for track in noise.wav noise-vbr.mp3 noise.ogg; do
  for condition in play seeks paused; do "$chain" engine+filters "$condition" "$scratch/$track"; done
done
for track in clicks-44100.wav clicks.ogg; do "$chain" engine play@0.75 "$scratch/$track"; done
for speed in 0.5 0.9 1.1 1.25 1.5; do "$chain" engine "play@$speed" "$scratch/clicks.wav"; done
[ "${2:-}" = --library ] || exit 0

# What the library says by itself: the grounds for what the player's engine does.
for track in noise.wav noise.ogg; do
  for condition in play seeks paused; do "$chain" library "$condition" "$scratch/$track"; done
done
for stretcher in scaletempo2 rubberband; do
  for speed in 0.5 0.6 0.67 0.75 0.8 0.9 1.1 1.25 1.5 2; do "$chain" "$stretcher" "play@$speed" "$scratch/clicks.wav"; done
done
# Only a method that splices pieces of the track can be placed by its waveform.
for speed in 0.5 0.75 1.25; do "$chain" scaletempo2 "play@$speed" "$scratch/noise.wav"; done
