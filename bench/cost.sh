#!/usr/bin/env bash
# What the player and its editor cost while they run: bench/cost.sh BIN-FOLDER [SECONDS]
# Processor time of a playing song beside mpv on the same song in the same seconds; wake-ups while paused and hidden,
# named by thread; memory beside a player and an editor of text from the same distribution.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
seconds=${2:-30}
. scripts/headless_demo_display.sh
. scripts/headless_demo_sound.sh
scratch=$(mktemp -d)
bus_pid=
programs=()
finish() {
  end_programs
  [ -n "$bus_pid" ] && kill "$bus_pid" 2>/dev/null
  stop_sound
  stop_display
  rm -rf "$scratch"
}
trap finish EXIT
end_programs() {
  for pid in "${programs[@]}"; do kill "$pid" 2>/dev/null && wait "$pid" 2>/dev/null || true; done
  programs=()
}

start_display "$scratch"
start_sound "$scratch/sound"
export XDG_CONFIG_HOME=$scratch/settings XDG_CACHE_HOME=$scratch/cache HOME=$scratch LC_ALL=C.UTF-8
{ read -r DBUS_SESSION_BUS_ADDRESS; read -r bus_pid; } < <(dbus-daemon --session --fork --print-address=1 --print-pid=1)
export DBUS_SESSION_BUS_ADDRESS
cp demo/demo.opus "$scratch/"
paste -d '' <(awk '{ ms = $1; printf "[%02d:%02d:%02d]\n", ms / 60000, ms / 1000 % 60, ms / 10 % 100 }' demo/demo.times) \
  demo/demo.txt >"$scratch/demo.lrc"

begin() { # TITLE COMMAND ...; without a title nothing is waited for. Leaves the number in $begun.
  local title=$1
  shift
  "$@" >"$scratch/log" 2>&1 &
  begun=$!
  programs+=("$begun")
  [ -z "$title" ] || timeout 60 xdotool search --sync --onlyvisible --name "$title" >/dev/null
}
hide() { for window in $(xdotool search --onlyvisible --pid "$1" --name '.'); do xdotool windowunmap "$window"; done; }
cpu_ms() { awk -v tick="$(getconf CLK_TCK)" '{ print int(($14 + $15) * 1000 / tick) }' "/proc/$1/stat"; }

playing() { # ROW-NAME hidden|shown
  local own other own_before other_before
  begin "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  own=$begun
  begin "" mpv --no-config --no-video --no-terminal "$scratch/demo.opus"
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
  begin "Vesmo Editor" "$bin/sonivo" --paused --edit "$scratch/demo.lrc" "$scratch/demo.opus"
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
  local ours theirs
  begin "Vesmo Editor" "$bin/sonivo" --edit "$scratch/demo.lrc" "$scratch/demo.opus"
  sleep 10
  # shellcheck disable=SC2046
  row "player and editor" $(memory "/proc/$begun")
  end_programs
  begin "Audacious" audacious "$scratch/demo.opus"
  theirs=$begun
  begin "demo.lrc" featherpad "$scratch/demo.lrc"
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
