#!/usr/bin/env bash
# The whole chain, from the key and from the sound to the position taken: bench/stamp_chain.sh BIN-FOLDER
# First the player asked over its protocol by a plug-in, in every format; then keys in the editor's real window: lines, lines
# while it redraws, and words.
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

# The player from the start of the track, with LINES open in its editor, measured by COMMAND.
stamp() { # LINES COMMAND ...
  local lines=$scratch/noise.lrc
  printf '%s\n' "$1" >"$lines"
  shift
  rm -rf "$XDG_CONFIG_HOME" && mkdir "$XDG_CONFIG_HOME" # which choices are on
  begin "$bin/sonivo" --edit "$lines" "$scratch/noise.wav"
  "$@" "$lines"
  end_programs
}
stamp "$(seq -f 'line %g' 200)" "$bin/stamp_chain"
echo 'the same, of 100,000 lines, while the window is drawn again in another size:'
stamp "$(seq -f 'line %g' 100000)" "$bin/stamp_chain" --redrawing
echo 'the same, word by word:'
stamp "$(seq -f 'line%.0f' 100000)" "$bin/stamp_chain" --redrawing-words
words='one two three four five six seven eight nine ten'
stamp "$(yes "$words" | head -20; seq -f 'word%g' 60)" "$bin/word_chain"
