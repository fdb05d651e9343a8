#!/usr/bin/env bash
# What the player and its editor cost while they run: bench/cost.sh BIN-FOLDER [SECONDS]
# Processor time of a playing song beside mpv on the same song in the same seconds; wake-ups while paused and hidden,
# named by thread; memory beside a player and an editor of text from the same distribution.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
seconds=${2:-30}
. bench/stage.sh
set_stage display sound bus
cp demo/demo.opus "$scratch/"
paste -d '' <(awk '{ ms = $1; printf "[%02d:%02d:%02d]\n", ms / 60000, ms / 1000 % 60, ms / 10 % 100 }' demo/demo.times) \
  demo/demo.txt >"$scratch/demo.lrc"

show() { # TITLE COMMAND ...
  local title=$1
  shift
  begin "$@"
  timeout 60 xdotool search --sync --onlyvisible --name "$title" >/dev/null
}
hide() { for window in $(xdotool search --onlyvisible --pid "$1" --name '.'); do xdotool windowunmap "$window"; done; }
cpu_ms() { awk -v tick="$(getconf CLK_TCK)" '{ print int(($14 + $15) * 1000 / tick) }' "/proc/$1/stat"; }

playing() { # ROW-NAME hidden|shown
  local own other own_before other_before
  show "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  own=$begun
  begin mpv --no-config --no-video --no-terminal "$scratch/demo.opus"
  other=$begun
  [ "$2" = shown ] || hide "$own"
  sleep 3
  own_before=$(cpu_ms "$own") other_before=$(cpu_ms "$other")
  sleep "$seconds"
  awk -v name="$1" -v s="$seconds" -v own="$(($(cpu_ms "$own") - own_before))" \
    -v other="$(($(cpu_ms "$other") - other_before))" \
    'BEGIN { printf "%-34s %10.2f %10.2f %10.2f\n", name, own / s / 10, other / s / 10, (own - other) / s / 10 }'
  end_programs
}

switches() { awk 'FNR == 1 { name = substr($0, 7) } /^voluntary/ { print FILENAME "\t" name "\t" $2 }' /proc/"$1"/task/*/status; }
resting() {
  show "Vesmo Editor" "$bin/sonivo" --paused --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  sleep 2
  hide "$begun"
  sleep 8
  switches "$begun" >"$scratch/before"
  sleep "$seconds"
  switches "$begun" >"$scratch/after"
  awk -F '\t' -v s="$seconds" 'NR == FNR { was[$1] = $3; next } { woke[$2] += $3 - was[$1]; sum += $3 - was[$1] }
    END { for (name in woke) if (woke[name]) printf "  %-32s %10.2f\n", name, woke[name] / s
          printf "%-34s %10.2f\n", "all threads", sum / s }' "$scratch/before" "$scratch/after"
  end_programs
}

memory() { awk '/^(Rss|Pss):/ { sum[$1] += $2 } END { print sum["Rss:"], sum["Pss:"] }' "${@/%//smaps_rollup}"; }
row() { printf '%-34s %10s %10s\n' "$@"; }
remembered() {
  local theirs
  show "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  sleep 10
  # shellcheck disable=SC2046
  row "player and editor" $(memory "/proc/$begun")
  end_programs
  show "Audacious" audacious "$scratch/demo.opus"
  theirs=$begun
  show "demo.lrc" featherpad "$scratch/demo.lrc"
  sleep 10
  # shellcheck disable=SC2046
  row "Audacious and FeatherPad" $(memory "/proc/$theirs" "/proc/$begun")
  end_programs
}

printf '%-34s %10s %10s %10s\n' "playing, percent of a core" "ours" "mpv" "above"
playing "windows shown" shown
playing "windows hidden" hidden
printf '\n%-34s %10s\n' "paused and hidden" "wake-ups/s"
resting
echo
row "memory, kB" RSS PSS
remembered
