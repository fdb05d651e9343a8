#!/usr/bin/env bash
# What a document of 100 000 lines takes in memory, beside another editor of text: bench/document_memory.sh BIN-FOLDER
# PSS of each process with the document on screen, and how much more that is than with a document of one line.
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$1
. scripts/headless_demo_display.sh
scratch=$(mktemp -d)
trap 'stop_display; rm -rf "$scratch"' EXIT
start_display "$scratch"
export XDG_CONFIG_HOME=$scratch/settings XDG_STATE_HOME=$scratch/state XDG_RUNTIME_DIR=$scratch HOME=$scratch LC_ALL=C.UTF-8
chmod 700 "$scratch"
echo "one line" >"$scratch/short.lrc"
for ((i = 0; i < 100000; i++)); do echo "[00:10:00]This is line $i, sung to the end of it"; done >"$scratch/long.lrc"

pss() { awk '/^Pss:/ { print $2 }' "/proc/$1/smaps_rollup"; }

# Until the memory no longer grows: the document is on the screen, and what loading took is given back.
settled_pss() { # PID
  local before=0 now
  for ((i = 0; i < 60; i++)); do
    sleep 0.5
    now=$(pss "$1")
    [ "$now" -eq "$before" ] && [ "$i" -gt 3 ] && break
    before=$now
  done
  echo "$now"
}

measure() { # TITLE KEYS COMMAND ...
  local title=$1 keys=$2 pid result
  shift 2
  "$@" >"$scratch/log" 2>&1 &
  pid=$!
  timeout 60 xdotool search --sync --onlyvisible --name "$title" >"$scratch/windows"
  sleep 1
  if [ -n "$keys" ]; then
    xdotool windowfocus --sync "$(tail -1 "$scratch/windows")" key "$keys"
  fi
  result=$(settled_pss "$pid")
  kill "$pid" && wait "$pid" 2>/dev/null || true
  echo "$result"
}

compare() { # NAME TITLE-SUFFIX KEYS COMMAND ...
  local name=$1 suffix=$2 keys=$3 short long
  shift 3
  short=$(measure "short.lrc.*$suffix" "$keys" "$@" "$scratch/short.lrc")
  long=$(measure "long.lrc.*$suffix" "$keys" "$@" "$scratch/long.lrc")
  printf '%-36s %12s %12s %12s\n' "$name" "$short" "$long" $((long - short))
}

printf '%-36s %12s %12s %12s\n' "kB (PSS)" "one line" "100 000" "difference"
compare "FeatherPad" "" "" featherpad
compare "editor with player, tag input" "Vesmo Editor" "" "$bin/sonivo" --edit
compare "editor with player, free edit" "Vesmo Editor" "ctrl+e" "$bin/sonivo" --edit
