#!/usr/bin/env python3
"""Makes the demo song: demo.opus, its plain text demo.txt and the true time of each line, demo.times.

The tune is synthesised here from the notes below. The words are spoken by espeak-ng; each line's leading
silence is cut off, so that the time it is laid at is the time its voice begins.

Words: Christina Rossetti (1830-1894), "Who Has Seen the Wind?", from Sing-Song, 1872;
the Iroha poem, Japan, about the year 1000, author unknown. Both in the public domain.

Needs espeak-ng, sox and ffmpeg. The same versions of these give the same bytes on every run.
Usage: make_song.py [FOLDER]   (default: the folder of this script)
"""

import array
import math
import os
import random
import subprocess
import sys
import tempfile
import wave

RATE = 48000
BEAT_MS = 717
BAR_MS = 4 * BEAT_MS

# (bar, beat within it, voice, shown, said): the line is heard from that beat on.
LINES = [
    (2, 0.0, "en-gb+f3", "Who has seen the wind?", None),
    (3, 0.0, "en-gb+f3", "Neither I nor you:", None),
    (3, 3.5, "en-gb+f3", "But when the leaves hang trembling,", None),
    (5, 0.0, "en-gb+f3", "The wind is passing through.", None),
    (6, 0.0, "en-gb+f3", "Who has seen the wind?", None),
    (7, 0.0, "en-gb+f3", "Neither you nor I:", None),
    (7, 3.5, "en-gb+f3", "But when the trees bow down their heads,", None),
    (9, 0.0, "en-gb+f3", "The wind is passing by.", None),
    (11, 0.0, "ja+f3", "色は匂へど 散りぬるを", "いろわ におえど ちりぬるお"),
    (12, 0.5, "ja+f3", "我が世誰ぞ 常ならむ", "わがよ たれぞ つねならん"),
    (13, 2.0, "ja+f3", "有為の奥山 今日越えて", "ういの おくやま きょう こえて"),
    (15, 0.0, "ja+f3", "浅き夢見じ 酔ひもせず", "あさき ゆめみじ えいもせず"),
]
BARS = 18

# One chord a bar: bass note and the pad's three notes, as MIDI numbers.
D, A, BM, G, EM = (38, (62, 66, 69)), (45, (61, 64, 69)), (47, (62, 66, 71)), (43, (62, 67, 71)), (40, (64, 67, 71))
CHORDS = [D, G, D, A, BM, G, D, A, BM, G, EM, D, A, BM, G, EM, A, D]

# The pluck's melody, one bar each: (beat, MIDI note).
PHRASES = {
    "open": [(0, 74), (1, 76), (1.5, 78), (2.5, 81), (3.5, 78)],
    "rise": [(0, 69), (0.5, 74), (1.5, 76), (2, 78), (3, 76)],
    "fall": [(0, 81), (1, 78), (2, 76), (2.5, 74), (3.5, 71)],
    "rest": [(0, 74), (1.5, 71), (2, 69), (3, 71)],
    "home": [(0, 66), (0.5, 69), (1, 74), (2, 81), (2.5, 86)],
}
MELODY = ["open", "fall", "rest", "rise", "rest", "fall", "rest", "rise", "rest",
          "fall", "open", "rest", "rise", "rest", "fall", "rise", "fall", "home"]


def run(*command):
    subprocess.run(command, check=True)


def frequency(note):
    return 440 * 2 ** ((note - 69) / 12)


class Mix:
    """Two channels of samples that sounds are added to."""

    def __init__(self, duration_ms):
        self.left = array.array("f", bytes(4 * (RATE * duration_ms // 1000)))
        self.right = array.array("f", self.left)

    def add(self, start_ms, sound, gain, pan=0.0):
        """Pan runs from -1, left, to 1, right."""
        first = round(start_ms * RATE / 1000)
        left_gain, right_gain = gain * (1 - pan) / 2, gain * (1 + pan) / 2
        for i in range(min(len(sound), len(self.left) - first)):
            self.left[first + i] += sound[i] * left_gain
            self.right[first + i] += sound[i] * right_gain

    def write(self, path):
        peak = max(max(map(abs, self.left)), max(map(abs, self.right)))
        scale = 0.85 * 32767 / peak
        frames = array.array("h", bytes(4 * len(self.left)))
        frames[0::2] = array.array("h", (round(s * scale) for s in self.left))
        frames[1::2] = array.array("h", (round(s * scale) for s in self.right))
        with wave.open(path, "wb") as out:
            out.setparams((2, 2, RATE, 0, "NONE", ""))
            out.writeframes(frames.tobytes())


def pluck(note, seconds, chance):
    """A plucked string: a burst of noise running round a delay line that dulls it."""
    length = RATE / frequency(note)
    size = int(length)
    part = length - size
    line = [chance.uniform(-1, 1) for _ in range(size)]
    for _ in range(3):
        line = [(line[i] + line[i - 1]) / 2 for i in range(size)]
    sound = array.array("f")
    position, last = 0, 0.0
    for _ in range(int(seconds * RATE)):
        here, after = line[position], line[(position + 1) % size]
        value = here * (1 - part) + last * part
        last = here
        sound.append(value)
        line[position] = 0.997 * (0.6 * value + 0.4 * after)
        position = (position + 1) % size
    return sound


def tone(note, seconds, partials, rise, fall):
    """Steady partials under a soft envelope (seconds)."""
    size = int(seconds * RATE)
    table = [sum(g * math.sin(2 * math.pi * n * i / 4096) for n, g in partials) for i in range(4096)]
    step = frequency(note) * 4096 / RATE
    sound = array.array("f")
    for i in range(size):
        now = i / RATE
        sound.append(min(1, now / rise, (seconds - now) / fall) * table[int(i * step) & 4095])
    return sound


def play_tune(mix):
    chance = random.Random(1126)
    spoken = {line[0] for line in LINES}
    strings = {note: pluck(note, 1.6, chance) for phrase in PHRASES.values() for _, note in phrase}
    for bar, ((bass, chord), phrase) in enumerate(zip(CHORDS, MELODY)):
        start = bar * BAR_MS
        for side, note in zip((-0.6, 0.0, 0.6), chord):
            mix.add(start, tone(note, BAR_MS / 1000 + 0.25, ((1, 1), (2, 0.25), (3, 0.08)), 0.35, 0.5), 0.05, side)
        for beat, seconds in ((0, 1.3), (2, 0.7), (3, 0.6)):
            mix.add(start + beat * BEAT_MS, tone(bass, seconds, ((1, 1), (2, 0.3)), 0.012, 0.3), 0.14)
        for beat, note in PHRASES[phrase]:
            mix.add(start + beat * BEAT_MS, strings[note], 0.16 if bar in spoken else 0.3, 0.25)


def voice_begins(samples):
    """Index of the first 2 ms that are louder than a fortieth of the loudest 2 ms."""
    size = RATE // 500
    loudness = [sum(s * s for s in samples[i:i + size]) for i in range(0, len(samples) - size, size)]
    bound = max(loudness) / 1600
    return next(i for i, power in enumerate(loudness) if power > bound) * size


def speak(voice, text, folder):
    """The spoken text from the voice's first sound on, loudest sample 1."""
    said, full = os.path.join(folder, "said.wav"), os.path.join(folder, "full.wav")
    run("espeak-ng", "-v", voice, "-s", "128", "-p", "55", "-w", said, text)
    run("sox", "-D", "-G", said, "-b", "16", "-r", str(RATE), full, "highpass", "90")
    with wave.open(full) as source:
        samples = array.array("h", source.readframes(source.getnframes()))
    samples = samples[voice_begins(samples):]
    peak = max(map(abs, samples))
    return array.array("f", (s / peak for s in samples))


def encode(wav, opus):
    run("ffmpeg", "-v", "error", "-y", "-i", wav, "-map_metadata", "-1", "-metadata", "title=First Light",
        "-metadata", "artist=The Sonivo Demo Band", "-c:a", "libopus", "-b:a", "68k", "-fflags", "+bitexact",
        "-flags:a", "+bitexact", opus)


def decode(path):
    raw = subprocess.run(["ffmpeg", "-v", "error", "-i", path, "-f", "s16le", "-ac", "1", "-ar", str(RATE), "-"],
                         check=True, capture_output=True).stdout
    return array.array("h", raw)


def displacement_ms(song, voice, start_ms):
    """How much later than `start_ms` the voice is heard in the song (best match within 15 ms)."""
    piece = voice[:RATE // 5:2]
    first = round(start_ms * RATE / 1000)

    def match(lag):
        return sum(map(float.__mul__, piece, map(float, song[first + lag:first + lag + 2 * len(piece):2])))

    best = max(range(-720, 721, 8), key=match)
    return max(range(best - 8, best + 9), key=match) * 1000 / RATE


def check(opus, voices, times):
    """Fails if a voice in the finished file begins more than 2 ms from its stated time."""
    song = decode(opus)
    shifts = [displacement_ms(song, voice, start) for voice, start in zip(voices, times)]
    print("voices begin", ", ".join(f"{shift:+.2f}" for shift in shifts), "ms from their stated times")
    if max(map(abs, shifts)) > 2:
        sys.exit("A line is not heard when it should be.")


def main():
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.dirname(os.path.abspath(__file__))
    times = [round(bar * BAR_MS + beat * BEAT_MS) for bar, beat, *_ in LINES]
    mix = Mix(BARS * BAR_MS + 1500)
    play_tune(mix)
    with tempfile.TemporaryDirectory() as scratch:
        voices = [speak(voice, said or shown, scratch) for _, _, voice, shown, said in LINES]
        for start, voice, after in zip(times, voices, times[1:] + [10 ** 9]):
            mix.add(start, voice, 1.5)
            if start + len(voice) * 1000 / RATE > after:
                sys.exit(f"The line at {start} ms runs into the next one.")
        mix.write(os.path.join(scratch, "song.wav"))
        encode(os.path.join(scratch, "song.wav"), os.path.join(folder, "demo.opus"))
    with open(os.path.join(folder, "demo.txt"), "w", encoding="utf-8") as text:
        text.writelines(line[3] + "\n" for line in LINES)
    with open(os.path.join(folder, "demo.times"), "w", encoding="utf-8") as out:
        out.writelines(f"{start}\t{line[3]}\n" for start, line in zip(times, LINES))
    check(os.path.join(folder, "demo.opus"), voices, times)


if __name__ == "__main__":
    main()
