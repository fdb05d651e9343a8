#!/usr/bin/env bash
# Runs clang-tidy over the program's sources with the settings of the tree: run_tidy.sh BUILD-FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
git ls-files 'platform/*.cpp' 'common/*.cpp' 'language/*.cpp' 'lyrics/*.cpp' 'plugin/*.cpp' 'interapp/*.cpp' \
  'toolkit/*.cpp' 'editviews/*.cpp' 'window/*.cpp' 'player/*.cpp' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p "$1" --quiet
