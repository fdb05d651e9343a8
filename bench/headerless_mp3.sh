#!/usr/bin/env bash
# Where decoders put the sound of an mp3 without the header that names its encoder's delay: bench/headerless_mp3.sh
# A tone that begins at 1 s is encoded with and without the header; how late it begins in what each decoder gives.
set -euo pipefail
cd "$(mktemp -d)"
trap 'rm -rf "$PWD"' EXIT
sox -n -r 44100 -c 1 -b 16 tone.wav synth 0.2 sine 1000 pad 1 1
lame --quiet tone.wav header.mp3
lame --quiet -t tone.wav headerless.mp3
for song in header headerless; do
  ffmpeg -v error -i $song.mp3 -ac 1 -ar 44100 "$song by ffmpeg.wav"
  mpg123 -q -m -r 44100 -w "$song by mpg123.wav" $song.mp3
  sox $song.mp3 -c 1 -r 44100 -b 16 "$song by sox.wav"
done
python3 - *by*.wav <<'PYTHON'
import struct, sys, wave
for name in sys.argv[1:]:
    with wave.open(name) as sound:
        count = sound.getnframes()
        samples = struct.unpack(f"<{count}h", sound.readframes(count))
    begin = next(i for i, sample in enumerate(samples) if abs(sample) > 2000)
    print(f"{name[:-4]:24} {begin / 44.1 - 1000:6.1f} ms late")
PYTHON
