#!/usr/bin/env bash
# Runs every fuzzer from its seeds: run_fuzzers.sh SECONDS BUILD-FOLDER. An input that breaks something is kept in the
# build folder and named.
set -euo pipefail
cd "$(dirname "$0")"
seconds=$1
build=$(realpath "../$2" 2>/dev/null || realpath "$2")
work=$build/fuzzing
mkdir -p "$work/found"
for corpus in corpus/*/; do
  name=$(basename "$corpus")
  grown=$work/$name
  mkdir -p "$grown" # what a run learns stays out of the checkout
  echo "fuzzing $name for $seconds s"
  if ! "$build/bin/fuzz_$name" -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
    -artifact_prefix="$work/found/$name-" "$grown" "$corpus" >"$work/$name.log" 2>&1; then
    tail -40 "$work/$name.log"
    exit 1
  fi
  grep -E '^Done|^stat::number_of_executed' "$work/$name.log" || true
done
