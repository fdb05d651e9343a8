#!/usr/bin/env bash
# How far the play position is from the sound put out, in every format and condition: bench/audio_chain.sh BIN-FOLDER
# [--library]. Reported minus heard, in ms of the track. Takes ten minutes of real time, with the library's own figures
# twenty.
set -euo pipefail
cd "$(dirname "$0")/.."
chain=$1/audio_chain
. scripts/headless_demo_sound.sh
scratch=$(mktemp -d)
trap 'stop_sound; rm -rf "$scratch"' EXIT
start_sound "$scratch/sound"

encode() { ffmpeg -v error -i "$scratch/$1" "${@:2:$#-2}" "$scratch/${!#}"; }
"$chain" --noise "$scratch/noise.wav"
"$chain" --clicks "$scratch/clicks.wav"
encode noise.wav -c:a libmp3lame -q:a 2 noise-vbr.mp3
encode noise.wav -c:a libmp3lame -q:a 2 -write_xing 0 -id3v2_version 0 noise-bare.mp3
encode noise.wav noise.flac
encode noise.wav -c:a libvorbis -q:a 6 noise.ogg
encode noise.wav -c:a libopus -b:a 128k noise.opus
encode noise.wav -c:a aac -b:a 160k noise.m4a
encode clicks.wav -ar 44100 clicks-44100.wav
encode clicks.wav -c:a libvorbis -q:a 6 clicks.ogg

"$chain" --columns
for track in noise.wav noise-vbr.mp3 noise-bare.mp3 noise.flac noise.ogg noise.opus noise.m4a; do
  for condition in play seeks paused; do "$chain" engine "$condition" "$scratch/$track"; done
done
for condition in play@0.75 seeks@0.75; do "$chain" engine "$condition" "$scratch/clicks.wav"; done
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
