#!/usr/bin/env bash
# Runs clang-tidy over the program's sources, or those named, with the settings of the tree: run_tidy.sh [SOURCE ...]
set -euo pipefail
cd "$(dirname "$0")/.."
# Without the precompiled headers of the other compiler.
cmake -S . -B build/tidy -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
  -DVESMO_WERROR=OFF -DVESMO_TESTS=OFF >/dev/null
[ $# -gt 0 ] || set -- $(git ls-files 'src/*.cpp')
printf '%s\n' "$@" | xargs -P "$(nproc)" -n 4 clang-tidy -p build/tidy --quiet 2>/dev/null
