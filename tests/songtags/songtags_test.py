#!/usr/bin/env python3
"""Lyrics inside songs, by the programs and by readers of other origin: songtags_test.py BIN-FOLDER [TEST]
Readers that are not installed are left out; VESMO_LONG_TESTS asks for all of them and for more kills."""
import json
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time
import unittest

BIN = pathlib.Path(sys.argv.pop(1))
LONG = "VESMO_LONG_TESTS" in os.environ
PATIENCE = 240

SHORT = "[ti:Un titre]\n[00:00:50]Première ligne\n[00:01:25]日本語の行 🎵\n[00:01:25][00:01:90]Refrain\nohne Zeit"
DOTTED = SHORT.replace("00:50", "00.50").replace("01:25", "01.25").replace("01:90", "01.90")
TIMES = [("Première ligne", 500), ("日本語の行 🎵", 1250), ("Refrain", 1250), ("Refrain", 1900)]
PLAIN = "Première ligne\n日本語の行 🎵\nRefrain\nohne Zeit"
LARGE = "".join(f"[{i // 60:02}:{i % 60:02}.{i % 100:02}]line {i} {'x' * (i % 90)}\n" for i in range(4000)).rstrip("\n")

COVER = ["-i", "cover.png", "-map", "0:a", "-map", "1:v", "-c:v", "copy", "-disposition:v", "attached_pic"]
FORMATS = {
    "v23.mp3": COVER + ["-c:a", "libmp3lame", "-id3v2_version", "3", "-write_id3v1", "1"],
    "v24.mp3": COVER + ["-c:a", "libmp3lame", "-id3v2_version", "4"],
    "v1.mp3": ["-c:a", "libmp3lame", "-id3v2_version", "0", "-write_id3v1", "1", "-metadata", "comment="],
    "bare.mp3": ["-c:a", "libmp3lame", "-map_metadata", "-1", "-fflags", "+bitexact", "-id3v2_version", "0", "-write_xing", "0"],
    "f.flac": COVER + ["-c:a", "flac"],
    "v.ogg": ["-c:a", "libvorbis"],
    "o.opus": ["-c:a", "libopus"],
    "x.oga": ["-c:a", "flac", "-f", "ogg"],
    "front.m4a": COVER + ["-c:a", "aac", "-movflags", "+faststart"],
    "end.m4a": ["-c:a", "aac"],
}
TAGS = ["title=Ein Lied — 歌", "artist=A & B", "album=X", "date=2001", "track=3/7", "genre=Rock", "comment=c"]


def output(*words, **more):
    return subprocess.run([*map(str, words)], check=True, capture_output=True, timeout=PATIENCE, **more).stdout


def ffmpeg(*words):
    return output("ffmpeg", "-nostdin", "-v", "error", "-y", *words)


def probed(song):
    """All tags as one reader sees them, lyrics apart from the others."""
    entries = "format_tags:stream_tags:chapter"
    seen = json.loads(output("ffprobe", "-v", "error", "-show_entries", entries, "-of", "json", song))
    tags = {}
    for part in [seen["format"], *seen["streams"]]:
        tags.update({name.lower(): value for name, value in part.get("tags", {}).items()})
    lyrics = {name: value for name, value in tags.items() if "lyrics" in name}
    return lyrics, {name: value for name, value in tags.items() if name not in lyrics}


def sound_of(song):
    """Packets with their times, the cover among them, and what they decode to."""
    packets = ffmpeg("-i", song, "-map", "0", "-c", "copy", "-f", "framemd5", "-").split(b"\n")
    # The reader counts the comments of Vorbis among its headers, and adds them to the first packet.
    return [line.split(b", S=")[0] for line in packets if not line.startswith(b"#extradata")], ffmpeg("-i", song, "-map", "0:a", "-f", "md5", "-")


def mutagen_tags(song):
    import mutagen
    tags = mutagen.File(song).tags
    def plain(value):
        return str(value), getattr(value, "data", b"")
    return {name: plain(value) for name, value in dict(tags or {}).items()}


class SongTags(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.songs = pathlib.Path(cls.folder.name)
        ffmpeg("-f", "lavfi", "-i", "sine=440:d=3", cls.songs / "tone.wav")
        ffmpeg("-f", "lavfi", "-i", "testsrc=s=64x64:d=1", "-frames:v", "1", cls.songs / "cover.png")
        tags = [word for tag in TAGS for word in ("-metadata", tag)]
        for name, options in FORMATS.items():
            words = [cls.songs / word if word == "cover.png" else word for word in options]
            inputs = 2 if "cover.png" in options else 0
            ffmpeg("-i", cls.songs / "tone.wav", *words[:inputs], *tags, *words[inputs:], cls.songs / name)

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def song(self, name, lyrics=None):
        path = shutil.copy2(self.songs / name, self.root)
        if lyrics is not None:
            pathlib.Path(path).with_suffix(".lrc").write_text(lyrics)
        return pathlib.Path(path)

    def lrc(self, *words, code=0):
        done = subprocess.run([BIN / "vesmo-lrc", *map(str, words)], capture_output=True, timeout=PATIENCE)
        self.assertEqual(done.returncode, code, done.stdout + done.stderr)
        return done.stdout.decode(), done.stderr.decode()

    def state_of(self, song):
        read = output(BIN / "vesmo-songtags", "read", song)
        return read[9:9 + int.from_bytes(read[5:9], "little")]

    def extracted(self, song):
        return self.lrc("extract", song)[0].removesuffix("\n")

    def test_sound_and_all_other_tags_stay_and_lyrics_come_back(self):
        for name in FORMATS:
            with self.subTest(name):
                song = self.song(name, SHORT)
                sound, (_, others), tags = sound_of(song), probed(song), mutagen_tags(song)
                for given, wanted in ((SHORT, DOTTED), (LARGE, LARGE), ("nur Text", "nur Text")):
                    song.with_suffix(".lrc").write_text(given)
                    self.lrc("embed", song)
                    self.assertEqual(self.extracted(song), wanted)
                    self.assertEqual(sound_of(song), sound)
                    lyrics, left = probed(song)
                    self.assertEqual(left, others)
                    self.assertIn(wanted, [value.replace("\r\n", "\n") for value in lyrics.values()])
                    after = {key: value for key, value in mutagen_tags(song).items()
                             if not any(word in key.lower() for word in ("lyr", "uslt", "sylt"))}
                    self.assertEqual(after, tags)
                before = song.stat()
                self.lrc("embed", song)
                self.assertEqual(song.stat(), before, "the same lyrics again change nothing")
                self.assertFalse([left for left in os.listdir(self.root) if "saving" in left])

    def test_other_readers_see_the_same_lyrics(self):
        import mutagen
        def id3(song):
            tags = mutagen.File(song).tags
            return tags.getall("USLT")[0].text, [(text.lstrip("\n"), ms) for text, ms in tags.getall("SYLT")[0].text]
        def vorbis(song):
            tags = mutagen.File(song).tags
            return tags["LYRICS"], tags["UNSYNCEDLYRICS"]
        def shows_all(*words):
            shown = output(*words).decode()
            return all(line in shown for line in DOTTED.split("\n"))
        readers = [("mutagen", (".mp3",), id3, (DOTTED, TIMES)),
                   ("mutagen", (".flac", ".ogg", ".opus", ".oga"), vorbis, ([DOTTED], [PLAIN])),
                   ("mutagen", (".m4a",), lambda song: mutagen.File(song)["©lyr"], [DOTTED]),
                   ("opusinfo", (".opus",), lambda song: shows_all("opusinfo", song), True),
                   ("ogginfo", (".ogg",), lambda song: shows_all("ogginfo", song), True),
                   ("vorbiscomment", (".ogg",), lambda song: shows_all("vorbiscomment", "-R", "-l", song), True),
                   ("AtomicParsley", (".m4a",), lambda song: shows_all("AtomicParsley", song, "-t"), True),
                   ("kid3-cli", (".mp3", ".flac", ".ogg", ".opus", ".m4a"),
                    lambda song: output("kid3-cli", "-c", "get lyrics", song).decode().strip(), DOTTED)]
        for name in FORMATS:
            song = self.song(name, SHORT)
            self.lrc("embed", song)
            for reader, ends, read, wanted in readers:
                if song.suffix in ends and (LONG or reader == "mutagen" or shutil.which(reader)):
                    with self.subTest(name, reader=reader):
                        self.assertEqual(read(song), wanted)

    def test_folders_are_handled_as_a_whole_and_previewed(self):
        for name in ("v23.mp3", "f.flac", "o.opus"):
            self.song(name, SHORT)
        without = self.song("v.ogg")
        before = {path: path.read_bytes() for path in self.root.iterdir()}
        shown, said = self.lrc("embed", "--dry-run", self.root)
        self.assertEqual(before, {path: path.read_bytes() for path in self.root.iterdir()})
        self.assertIn("v23.lrc (5 lines, 4 times) as USLT, SYLT\n", shown)
        self.assertIn("3 files would change, 1 unchanged", said)
        self.lrc("embed", self.root)
        other = self.root / "other"
        other.write_text("text")
        shown, _ = self.lrc("embed", "-n", "--lyrics", other, self.root / "o.opus")
        self.assertIn("; replaces LYRICS (5 lines, 4 times); UNSYNCEDLYRICS (4 lines, 0 times)\n", shown)
        self.lrc("extract", "-o", self.root / "out", self.root)
        self.assertEqual(sorted(os.listdir(self.root / "out")), ["f.lrc", "o.lrc", "v23.lrc"])
        for words in (["extract", without], ["embed", without], ["embed", other, "--lyrics", other]):
            self.lrc(*words, code=1)

    def test_what_cannot_be_changed_safely_is_refused_and_stays(self):
        whole = {name: (self.songs / name).read_bytes() for name in FORMATS}
        dice = random.Random(1)
        bad = {"empty.mp3": b"", "noise.ogg": dice.randbytes(5000), "text.flac": b"fLaC but not really",
               "frames.mp3": b"ID3\3\0\0\0\0\0\x20TIT2\0\0\x20\0\0\0\0x" + bytes(40) + whole["bare.mp3"],
               "huge.mp3": b"ID3\4\0\0\x7f\x7f\x7f\x7f" + whole["bare.mp3"],
               "cut.m4a": whole["front.m4a"][:2000], "video.ogg": whole["v.ogg"][:58] * 2 + whole["v.ogg"][58:],
               "block.flac": b"fLaC\x04\xff\xff\xff" + whole["f.flac"][8:]}
        lyrics = self.root / "x.lrc"
        lyrics.write_text(SHORT)
        for name, content in bad.items():
            with self.subTest(name):
                (self.root / name).write_bytes(content)
                self.lrc("embed", "--lyrics", lyrics, self.root / name, code=1)
                self.assertEqual((self.root / name).read_bytes(), content)
        song = self.song("end.m4a", SHORT)
        os.symlink(song, self.root / "link.m4a")
        self.lrc("embed", "--lyrics", lyrics, self.root / "link.m4a", code=1)
        os.link(song, self.root / "second.m4a")
        self.lrc("embed", song, code=1)
        (self.root / "second.m4a").unlink()
        state = self.state_of(song)
        os.utime(song, (1, 1))
        self.assertEqual(subprocess.run([BIN / "vesmo-songtags", "write", song, state], input=b"x").returncode, 14, "changed")
        song.chmod(0o640)
        self.lrc("embed", song)
        self.assertEqual(song.stat().st_mode & 0o777, 0o640)
        self.assertFalse([name for name in os.listdir(self.root) if "saving" in name])

    def test_a_song_that_changes_while_it_is_written_is_not_replaced(self):
        song = self.song("end.m4a")
        is_writing = lambda: any("saving" in name for name in os.listdir(self.root))
        is_before = False
        while not is_before:  # it may be done before it is stopped
            tool = subprocess.Popen([BIN / "vesmo-songtags", "write", song, self.state_of(song)], stdin=subprocess.PIPE)
            tool.stdin.write(b"[00:01.00]x")
            tool.stdin.close()
            while tool.poll() is None and not is_writing():
                pass
            tool.send_signal(signal.SIGSTOP)
            is_before = is_writing()
            os.utime(song, (1, 1))
            content = song.read_bytes()
            tool.send_signal(signal.SIGCONT)
            code = tool.wait(PATIENCE)
        self.assertEqual(code, 14, "changed")
        self.assertEqual(song.read_bytes(), content)

    def test_killed_at_any_moment_the_song_is_the_old_or_the_new_one(self):
        seed = random.randrange(1 << 30)
        dice = random.Random(seed)
        song = self.song("f.flac")
        old = song.read_bytes() + bytes(8 << 20)
        def write(killAfter=None):
            song.write_bytes(old)
            state = self.state_of(song)
            began = time.monotonic()
            with subprocess.Popen([BIN / "vesmo-songtags", "write", song, state], stdin=subprocess.PIPE) as writer:
                writer.stdin.write(DOTTED.encode())
                writer.stdin.close()
                if killAfter is not None:
                    try:
                        writer.wait(killAfter)
                    except subprocess.TimeoutExpired:
                        writer.send_signal(signal.SIGKILL)
                writer.wait(PATIENCE)
            return time.monotonic() - began
        took = max(write() for _ in range(3))
        new = song.read_bytes()
        self.assertNotEqual(new, old)
        counts = {old: 0, new: 0}
        for number in range(200 if LONG else 20):
            write(dice.uniform(0, took))
            self.assertIn(song.read_bytes(), counts, f"round {number}, seed {seed}")
            counts[song.read_bytes()] += 1
        write()
        self.assertEqual(os.listdir(self.root), [song.name], "what killed writers left is removed")
        print(f"killed: {counts[old]} times the old song, {counts[new]} times the new one", file=sys.stderr)


if __name__ == "__main__":
    unittest.main()
