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

for ((round = 0; round < rounds; ++round)); do
  print_cpu_of_playing "lane on" "$seconds" "$scratch/demo.lrc" ctrl+g
  print_cpu_of_playing "lane off" "$seconds" "$scratch/demo.lrc"
done
