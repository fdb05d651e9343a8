#!/usr/bin/env bash
# A file of 100,000 lines in the editor and in KWrite, in turn: bench/large_file.sh BIN-FOLDER [RUNS]
# From exec until the window stands and until the program is quiet, with the processor time it took; medians.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
runs=${2:-11}
command -v kwrite >/dev/null || { echo "large_file.sh: KWrite is not there (apt install kwrite)." >&2; exit 2; }
. bench/stage.sh
set_stage display bus
awk 'BEGIN { for (i = 0; i < 100000; ++i) printf "[%02d:%02d:%02d]This is line %d, sung to the end of it\n", i / 6000 % 100, i / 100 % 60, i % 100, i }' >"$scratch/long.lrc"

measure_all() {
  "$bin/startup_time" 1 "long.lrc" "$bin/sonivo" --edit "$scratch/long.lrc" >>"$scratch/editor.times"
  "$bin/startup_time" 1 "long.lrc" kwrite "$scratch/long.lrc" >>"$scratch/kwrite.times"
}
measure_all # both start from a warm file cache, and with settings that are there
rm "$scratch"/*.times
for _ in $(seq "$runs"); do measure_all; done

median() { sort -n -k "$2,$2" "$scratch/$1.times" | awk -v c="$2" '{ v[NR] = $c } END { print v[int((NR + 1) / 2)] }'; }
printf '%-28s %10s %10s %14s %10s\n' "100,000 lines, $runs in turn" "shown ms" "quiet ms" "processor ms" "PSS kB"
for program in editor kwrite; do
  printf '%-28s %10s %10s %14s %10s\n' "$program" "$(median $program 1)" "$(median $program 4)" "$(median $program 5)" "$(median $program 3)"
done
