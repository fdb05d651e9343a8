#!/usr/bin/env bash
# Runs every fuzzer from its seeds, one on each core: run_fuzzers.sh SECONDS BUILD-FOLDER. An input that breaks something
# is kept in the build folder and named.
set -euo pipefail
cd "$(dirname "$0")"
seconds=$1
build=$(realpath "../$2" 2>/dev/null || realpath "$2")
work=$build/fuzzing
mkdir -p "$work/found"

run_fuzzer() { # NAME
  local grown=$work/$1
  mkdir -p "$grown" # what a run learns stays out of the checkout
  if ! "$build/bin/fuzz_$1" -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$work/found/$1-" "$grown" "corpus/$1" >"$work/$1.log" 2>&1; then
    tail -40 "$work/$1.log"
    return 1
  fi
  echo "$1: $(grep -oE '^Done [0-9]+ runs' "$work/$1.log" || true)"
}
export -f run_fuzzer
export seconds build work
ls corpus | xargs -P "$(nproc)" -I{} bash -c 'run_fuzzer {}'
