#!/usr/bin/env bash
# Configures and builds one preset: build.sh PRESET [CMAKE-OPTION ...] [-- TARGET ...]
set -euo pipefail
cd "$(dirname "$0")/.."
preset=$1
shift
options=()
while [ $# -gt 0 ] && [ "$1" != -- ]; do options+=("$1"); shift; done
[ $# -gt 0 ] && shift
# Checkouts in different folders share the cache.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
export CCACHE_SLOPPINESS=pch_defines,time_macros
cmake --preset "$preset" "${options[@]}" >"build-$preset.log" 2>&1 || { cat "build-$preset.log"; exit 1; }
rm -f "build-$preset.log"
cmake --build --preset "$preset" ${1:+--target "$@"}
