#!/usr/bin/env bash
# How far the position that a stamp takes is from the sound put out, while another player on the session bus is the
# source: bench/bus_chain.sh BIN-FOLDER. Reported minus heard, in ms of the track, for two players of Debian.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. bench/stage.sh
set_stage display sound bus
tracks=(noise.wav noise.flac noise-vbr.mp3)
make_tracks "${tracks[@]}"
make_probed_player # without the editor

play_in() { # PLAYER TRACK
  case "$1" in
    mpv) begin mpv --no-config --no-video --really-quiet --ao=pulse --script=/usr/lib/mpv-mpris/mpris.so "$2" ;;
    audacious) begin audacious -H "$2" ;;
  esac
}
"$bin/audio_chain" --columns
for player in mpv audacious; do
  for track in "${tracks[@]}"; do
    play_in "$player" "$scratch/$track"
    sleep 2
    "$bin/audio_chain" --source "$player" "$scratch/bin/sonivo" "$scratch/$track" 2>>"$scratch/player.log" ||
      { cat "$scratch/player.log" "$scratch/log" >&2; exit 1; }
    end_programs
  done
done
