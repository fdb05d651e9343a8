#!/usr/bin/env bash
# How far the position that a stamp takes is from the sound put out, while another player on the session bus is the
# source: bench/bus_chain.sh BIN-FOLDER. Reported minus heard, in ms of the track, for two players of Debian.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. scripts/headless_demo_sound.sh
. scripts/headless_demo_display.sh
scratch=$(mktemp -d)
bus_pid=
other_pid=
stop_other() {
  [ -z "$other_pid" ] || kill "$other_pid" 2>/dev/null || true
  [ -z "$other_pid" ] || wait "$other_pid" 2>/dev/null || true
  other_pid=
}
finish() {
  stop_other
  [ -n "$bus_pid" ] && kill "$bus_pid" 2>/dev/null
  stop_sound
  stop_display
  rm -rf "$scratch"
}
trap finish EXIT
start_display "$scratch"
start_sound "$scratch/sound"
export XDG_CONFIG_HOME=$scratch/settings XDG_CACHE_HOME=$scratch/cache
mkdir -p "$XDG_CONFIG_HOME" "$XDG_CACHE_HOME"
export DBUS_SESSION_BUS_ADDRESS=unix:path=$scratch/bus
dbus-daemon --session --nofork --address="$DBUS_SESSION_BUS_ADDRESS" 2>"$scratch/bus.log" &
bus_pid=$!

encode() { ffmpeg -v error -i "$scratch/noise.wav" "$@"; }
"$bin/audio_chain" --noise "$scratch/noise.wav"
encode "$scratch/noise.flac"
encode -c:a libmp3lame -q:a 2 "$scratch/noise-vbr.mp3"

# A player folder of its own, with the probe alone.
mkdir -p "$scratch/bin/plugins"
cp "$bin"/sonivo* "$scratch/bin/"
cp "$bin/bench_plugins/gen_ChainProbe.so" "$scratch/bin/plugins/"

play_in() { # PLAYER TRACK
  case "$1" in
    mpv) mpv --no-config --no-video --really-quiet --ao=pulse --script=/usr/lib/mpv-mpris/mpris.so "$2" ;;
    audacious) audacious -H "$2" ;;
  esac >"$scratch/$1.log" 2>&1 &
  other_pid=$!
}
"$bin/audio_chain" --columns
for player in mpv audacious; do
  for track in noise.wav noise.flac noise-vbr.mp3; do
    play_in "$player" "$scratch/$track"
    sleep 2
    "$bin/audio_chain" --source "$player" "$scratch/bin/sonivo" "$scratch/$track" 2>>"$scratch/player.log" ||
      { cat "$scratch/player.log" "$scratch/$player.log" >&2; exit 1; }
    stop_other
  done
done
