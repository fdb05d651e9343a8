#!/usr/bin/env bash
# How long the lane waits for its song: bench/song_sound.sh BIN
# The whole of a song of four minutes, and ten seconds in a song of one hour, beside decoding the same by ffmpeg.
set -euo pipefail
bin=$(realpath "$1")
demo=$(realpath "$(dirname "$0")/../demo/demo.opus")
cd "$(mktemp -d)"
trap 'rm -rf "$PWD"' EXIT
ffmpeg -v error -stream_loop -1 -i "$demo" -t 240 -b:a 192k song.mp3
ffmpeg -v error -stream_loop -1 -i "$demo" -t 3600 -b:a 192k hour.mp3

seconds() { # COMMAND...: the median of five runs
  for _ in 1 2 3 4 5; do
    local start=$EPOCHREALTIME
    "$@" >/dev/null
    awk "BEGIN { print $EPOCHREALTIME - $start }"
  done | sort -n | sed -n 3p
}

row() { # NAME, TARGET in seconds, OURS in words, FFMPEG in words
  local ours theirs
  ours=$(seconds "$bin/sonivo-peaks" --sound $3)
  theirs=$(seconds ffmpeg -v error -threads 1 $4 -f null -)
  awk -v name="$1" -v target="$2" -v ours="$ours" -v theirs="$theirs" 'BEGIN {
    printf "%-28s %6.2f s (target %s s) %6.2f x ffmpeg %s\n", name, ours, target, ours / theirs, (ours > target ? "MISSED" : "") }'
}
row "4 minutes, whole" 1 "song.mp3" "-i song.mp3"
row "10 s of an hour" 2 "hour.mp3 3000000 3010000" "-ss 3000 -t 10 -i hour.mp3"
