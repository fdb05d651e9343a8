#!/usr/bin/env bash
# The whole chain, from the key and from the sound to the position taken: bench/stamp_chain.sh BIN-FOLDER
# First the player asked over its protocol by a plug-in, in every format; then keys in the editor's real window.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. scripts/headless_demo_sound.sh
. scripts/headless_demo_display.sh
scratch=$(mktemp -d)
player_pid=
finish() {
  [ -n "$player_pid" ] && kill "$player_pid" 2>/dev/null
  stop_sound
  stop_display
  rm -rf "$scratch"
}
trap finish EXIT
start_display "$scratch"
start_sound "$scratch/sound"
export XDG_CONFIG_HOME=$scratch/settings

encode() { ffmpeg -v error -i "$scratch/noise.wav" "$@"; }
"$bin/audio_chain" --noise "$scratch/noise.wav"
encode -c:a libmp3lame -q:a 2 "$scratch/noise-vbr.mp3"
encode -c:a libmp3lame -q:a 2 -write_xing 0 -id3v2_version 0 "$scratch/noise-bare.mp3"
encode "$scratch/noise.flac"
encode -c:a libvorbis -q:a 6 "$scratch/noise.ogg"
encode -c:a libopus -b:a 128k "$scratch/noise.opus"
encode -c:a aac -b:a 160k "$scratch/noise.m4a"

# A player folder of its own, with the probe beside the editor.
mkdir "$scratch/bin"
cp -r "$bin/sonivo" "$bin/plugins" "$scratch/bin/"
cp "$bin/bench_plugins/gen_ChainProbe.so" "$scratch/bin/plugins/"
"$bin/audio_chain" --columns
for track in noise.wav noise-vbr.mp3 noise-bare.mp3 noise.flac noise.ogg noise.opus noise.m4a; do
  "$bin/audio_chain" --player "$scratch/bin/sonivo" "$scratch/$track" 2>>"$scratch/player.log"
done

seq -f 'line %g' 200 >"$scratch/noise.lrc"
"$bin/sonivo" --edit "$scratch/noise.lrc" "$scratch/noise.wav" 2>>"$scratch/player.log" &
player_pid=$!
"$bin/stamp_chain" "$scratch/noise.lrc"
