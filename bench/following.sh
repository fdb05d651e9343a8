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

for ((round = 0; round < rounds; ++round)); do
  print_cpu_of_playing "following on" "$seconds" "$scratch/far.lrc"
  print_cpu_of_playing "following off" "$seconds" "$scratch/far.lrc" f
done
