#!/usr/bin/env bash
# What it costs that the list of lyrics follows the song: bench/following.sh BIN-FOLDER [SECONDS [ROUNDS]]
# Processor time of the program, in percent of a core, while a song plays whose 60 timed lines stand far apart in 3,000;
# in turn with following and without.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
seconds=${2:-20}
rounds=${3:-3}
. bench/stage.sh
set_stage display sound bus
cp demo/demo.opus "$scratch/"
awk '{ ms = $1; printf "[%02d:%02d:%02d]sung\n", ms / 60000, ms / 1000 % 60, ms / 10 % 100
       for (i = 0; i < 49; ++i) print "a line without a time" }' demo/demo.times >"$scratch/far.lrc"

cpu_ms() { awk -v tick="$(getconf CLK_TCK)" '{ print int(($14 + $15) * 1000 / tick) }' "/proc/$1/stat"; }

playing() { # on|off
  local before window
  rm -rf "$XDG_CONFIG_HOME"
  mkdir "$XDG_CONFIG_HOME"
  begin "$bin/sonivo" --edit "$scratch/far.lrc" "$scratch/demo.opus"
  window=$(timeout 60 xdotool search --sync --onlyvisible --name "Vesmo Editor" | head -n 1)
  sleep 2
  xdotool windowfocus --sync "$window"
  [ "$1" = on ] || xdotool key f
  sleep 5 # following waits for this long after a key
  before=$(cpu_ms "$begun")
  sleep "$seconds"
  awk -v what="$1" -v s="$seconds" -v ms="$(($(cpu_ms "$begun") - before))" \
    'BEGIN { printf "following %-4s %6.2f\n", what, ms / s / 10 }'
  end_programs
}

for ((round = 0; round < rounds; ++round)); do
  playing on
  playing off
done
