#!/usr/bin/env bash
# From exec to the editor's window on screen, beside an empty Qt 6 window: bench/startup.sh BIN-FOLDER [RUNS]
# Medians, and the memory of each process once its window stands.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
runs=${2:-21}
. scripts/headless_demo_display.sh
scratch=$(mktemp -d)
trap 'stop_display; rm -rf "$scratch"' EXIT
start_display "$scratch"
export XDG_STATE_HOME=$scratch/state XDG_CACHE_HOME=$scratch/cache XDG_RUNTIME_DIR=$scratch
cp demo/demo.txt "$scratch/demo.lrc"
cp demo/demo.opus "$scratch/"

# Two lines that need no Japanese font, which is the largest single thing in memory.
printf 'first line\nsecond line\n' >"$scratch/latin.lrc"

# Each with settings of its own: the player remembers its songs.
measure() { # NAME TITLE PROGRAM...
  XDG_CONFIG_HOME=$scratch/settings-$1 "$bin/startup_time" 1 "${@:2}" >>"$scratch/$1.times"
}
measure_all() {
  measure empty "An empty window" "$bin/startup_window"
  measure editor "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  measure text "An empty window" "$bin/startup_window" "$scratch/demo.lrc"
  measure bare "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc"
  measure latin "Vesmo Editor" "$bin/sonivo" --edit "$scratch/latin.lrc"
}
measure_all # all start from a warm file cache, and with settings that are there
rm "$scratch"/*.times
# In turn, for a machine's pace changes from one minute to the next.
for _ in $(seq "$runs"); do measure_all; done

medians() { # NAME
  for column in 1 2 3; do
    sort -n -k "$column,$column" "$scratch/$1.times" | awk -v c="$column" '{ v[NR] = $c } END { print v[int((NR + 1) / 2)] }'
  done | xargs
}
empty=$(medians empty) editor=$(medians editor) text=$(medians text) bare=$(medians bare) latin=$(medians latin)

row() { printf '%-38s %9s %11s %11s\n' "$1" "$2" "$3" "$4"; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { split(a, x); split(b, y); printf "%.2f %.2f %.2f", x[1] / y[1], x[2] / y[2], x[3] / y[3] }'; }
row "median of $runs starts, in turn" "ms" "RSS kB" "PSS kB"
# shellcheck disable=SC2086
{
  row "empty Qt 6 window" $empty
  row "Qt 6 window showing the text" $text
  row "editor, with player and song" $editor
  row "editor, with player, no song" $bare
  row "the same, Latin text" $latin
  row "ratio, with song" $(ratio "$editor" "$empty")
  row "ratio, no song" $(ratio "$bare" "$empty")
  row "ratio, Latin text" $(ratio "$latin" "$empty")
  row "ratio, no song, to the text's window" $(ratio "$bare" "$text")
}
