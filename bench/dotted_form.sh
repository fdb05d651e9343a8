#!/usr/bin/env bash
# Reading 1 000 000 tagged lines, beside ffmpeg reading the same song in its dotted form: bench/dotted_form.sh BIN-FOLDER
# Whole processes, in turn; medians of 5.
set -euo pipefail
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
awk 'BEGIN { for (i = 0; i < 1000000; ++i) printf "[%02d:%02d:%02d]Who has seen the wind? Neither I nor you\n", i / 6000 % 100, i / 100 % 60, i % 100 }' >"$scratch/a.lrc"
sed -E 's/^\[(..):(..):(..)\]/[\1:\2.\3]/' "$scratch/a.lrc" >"$scratch/b.lrc"

seconds() { local start end; start=$(date +%s%N); "$@" >/dev/null; end=$(date +%s%N); echo $(((end - start) / 1000)); }
for _ in 1 2 3 4 5; do
  seconds "$1/core_bench" peak load "$scratch/a.lrc" >>"$scratch/ours"
  seconds ffmpeg -v error -i "$scratch/b.lrc" -map 0:s -c copy -f null - >>"$scratch/theirs"
done
paste <(sort -n "$scratch/ours") <(sort -n "$scratch/theirs") | sed -n 3p |
  awk '{ printf "load      1000000  whole process   %8.0f ms   ffmpeg %8.0f ms   %.1f times as fast\n", $1 / 1000, $2 / 1000, $2 / $1 }'
