#!/usr/bin/env bash
# The demo by itself, without a display or a sound card: headless_demo.sh BIN-FOLDER [RUNS]
# On a virtual display and a sound server that plays into nothing, the player plays the demo song and its editor's
# window is sent one space bar per line as each line is heard, then Ctrl+S. Prints each line's tag next to its true time.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
runs=${2:-1}
out=$PWD/build/headless_demo
. scripts/headless_demo_sound.sh
. scripts/headless_demo_display.sh

for program in Xvfb pulseaudio "$bin/sonivo" "$bin/sing"; do
  command -v "$program" >/dev/null || { echo "headless_demo.sh: $program is not there." >&2; exit 1; }
done

scratch=$(mktemp -d)
player_pid=
finish() {
  [ -n "$player_pid" ] && kill "$player_pid" 2>/dev/null
  stop_sound
  stop_display
  rm -rf "$scratch"
}
trap finish EXIT

# The program must exit successfully when its windows are closed.
end_player() {
  for _ in $(seq 100); do
    kill -0 "$player_pid" 2>/dev/null || break
    sleep 0.1
  done
  if kill -0 "$player_pid" 2>/dev/null; then
    echo "The player did not end when its window was closed." >&2
    return 1
  fi
  local status=0
  wait "$player_pid" || status=$?
  player_pid=
  [ "$status" -eq 0 ] || { echo "The player ended with status $status." >&2; return 1; }
}

# One run with its own folder and settings.
perform() {
  local work=$scratch/run$1 status=0
  mkdir -p "$work/settings"
  cp demo/demo.opus "$work/"
  cp demo/demo.txt "$work/demo.lrc"
  XDG_CONFIG_HOME=$work/settings XDG_STATE_HOME=$work/state XDG_CACHE_HOME=$work/cache "$bin/sonivo" --paused --edit "$work/demo.lrc" "$work/demo.opus" 2>"$work/player.log" &
  player_pid=$!
  "$bin/sing" "$work/demo.opus" demo/demo.times "$work/demo.lrc" "$out/window.png" "$scratch/errors" || status=1
  if [ "$status" -eq 0 ] || ! kill -0 "$player_pid" 2>/dev/null; then end_player || status=1; fi
  [ "$status" -eq 0 ] || { echo "The player said:"; cat "$work/player.log"; } >&2
  cp "$work/demo.lrc" "$work/player.log" "$out/"
  return "$status"
}

summary() {
  sort -n "$scratch/errors" | awk '{ size = $1 < 0 ? -$1 : $1; print size }' | sort -n |
    awk -v runs="$runs" '{ e[NR] = $1 } END { printf "%d runs, %d lines: median error %d ms, worst %d ms\n", runs, NR, e[int((NR + 1) / 2)], e[NR] }'
}

mkdir -p "$out"
start_display "$scratch"
start_sound "$scratch/sound"
echo "The song plays in real time: about a minute a run."
for run in $(seq "$runs"); do perform "$run"; done
[ "$runs" -eq 1 ] || summary
echo "Picture of the windows: $out/window.png"
echo "The saved lyrics:       $out/demo.lrc"
