#!/usr/bin/env bash
# The gap between two songs of an album, in samples: bench/gapless_join.sh BIN-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
bin=$(realpath "$1")
. bench/stage.sh
set_stage sound
"$bin/gapless_join" "$scratch"
