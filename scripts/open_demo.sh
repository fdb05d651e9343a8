#!/usr/bin/env bash
# Plays the demo song with its untagged text open in the editor: open_demo.sh BIN-FOLDER
# Works on a copy, so that saving never changes the checkout; a text that was timed before is kept.
set -euo pipefail
cd "$(dirname "$0")/.."
work=$PWD/build/demo
mkdir -p "$work"
cp demo/demo.opus "$work/"
[ -e "$work/demo.lrc" ] || cp demo/demo.txt "$work/demo.lrc"
echo "Press the space bar in the editor as each line is sung, then Ctrl+S. The lyrics: $work/demo.lrc"
exec "$1/sonivo" --edit "$work/demo.lrc" "$work/demo.opus"
