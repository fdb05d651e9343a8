#!/usr/bin/env bash
# What it costs that the lane shows the sound and its head of play moves: bench/lane.sh BIN-FOLDER [SECONDS [ROUNDS]]
# Processor time of the program, in percent of a core, while a song plays whose lines have a tag each; in turn with the lane
# and without, the list following the song in both cases.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
seconds=${2:-20}
rounds=${3:-3}
. bench/stage.sh
set_stage display sound bus
cp demo/demo.opus "$scratch/"
awk -F'\t' '{ ms = $1; printf "[%02d:%02d:%02d]%s\n", ms / 60000, ms / 1000 % 60, ms / 10 % 100, $2 }' \
  demo/demo.times >"$scratch/demo.lrc"

cpu_ms() { awk -v tick="$(getconf CLK_TCK)" '{ print int(($14 + $15) * 1000 / tick) }' "/proc/$1/stat"; }

playing() { # on|off
  local before window
  rm -rf "$XDG_CONFIG_HOME"
  mkdir "$XDG_CONFIG_HOME"
  begin "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  window=$(timeout 60 xdotool search --sync --onlyvisible --name "Vesmo Editor" | head -n 1)
  sleep 2
  xdotool windowfocus --sync "$window"
  [ "$1" = off ] || xdotool key ctrl+g
  sleep 5 # the sound is read, and following waits for this long after a key
  before=$(cpu_ms "$begun")
  sleep "$seconds"
  awk -v what="$1" -v s="$seconds" -v ms="$(($(cpu_ms "$begun") - before))" \
    'BEGIN { printf "lane %-4s %6.2f\n", what, ms / s / 10 }'
  end_programs
}

for ((round = 0; round < rounds; ++round)); do
  playing on
  playing off
done
