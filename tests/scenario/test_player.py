"""The player's own window: its list of songs, and what is found again."""
import shutil
import subprocess
import time
import wave

import eyes
import hands
import stage
from case import Case

FIRST_LIGHT = "First Light — The Sonivo Demo Band"


class ThePlayersList(Case):
    def setUp(self):
        super().setUp()
        self.others = [self.stage.root / name for name in ("b.opus", "c.opus")]
        for path in self.others:
            shutil.copy(self.stage.song, path)

    def list(self):
        return eyes.find(self.stage.player(), "list", "Playlist")

    def row(self, index):
        return eyes.place(eyes.children(self.list())[index])

    def wait_songs(self, *names):
        self.stage.wait(lambda: [eyes.name(row) for row in eyes.children(self.list())] == list(names), f"the songs {names}")

    def test_songs_are_dropped_moved_and_removed_and_found_again(self):
        s = self.stage
        s.start()
        self.wait_songs(FIRST_LIGHT)
        hands.drop_files(eyes.name(s.player()), eyes.place(self.list()), self.others)
        self.wait_songs(FIRST_LIGHT, "b", "c")
        hands.drag(self.row(2), self.row(0))
        self.wait_songs("c", FIRST_LIGHT, "b")
        hands.press("alt+Down")
        self.wait_songs(FIRST_LIGHT, "c", "b")
        hands.click(self.row(2))
        hands.press("Delete")
        self.wait_songs(FIRST_LIGHT, "c")
        hands.press("Right")
        s.wait_position(5)
        s.close_player()
        s.start(songs=[])
        self.wait_songs(FIRST_LIGHT, "c")
        s.wait_position(5)

    def test_the_arrow_keys_choose_a_song_as_soon_as_the_window_is_in_front(self):
        s = self.stage
        s.start(songs=[str(path) for path in (s.song, *self.others)])
        hands.click(eyes.place(eyes.find(s.player(), "label", "0:00")))
        hands.press("Down", "Down", "Return")
        self.wait_songs(FIRST_LIGHT, "b", FIRST_LIGHT)

    def test_a_second_start_hands_its_songs_to_the_first(self):
        s = self.stage
        s.start()
        second = subprocess.run([stage.BIN / "sonivo", "--paused", "b.opus"], cwd=s.root, env=s.own(), timeout=eyes.PATIENCE, check=False)
        self.assertEqual(second.returncode, 0)
        self.wait_songs(FIRST_LIGHT, FIRST_LIGHT)

    def test_what_cannot_be_played_says_why_and_the_next_song_goes_on(self):
        s = self.stage
        empty = s.file("empty.mp3", "")
        songs = s.file("songs.m3u", f"gone.mp3\nsongs.m3u\nempty.mp3\n{s.song}\n")
        s.start(songs=[str(songs)])
        shown = s.texts_in(s.player())
        for part in (f"Cannot play {empty}: the file is empty", "songs.m3u names itself", "is not there: "):
            self.assertIn(part, shown)


class AnotherPlayerAsSource(Case):
    """A real one, paused at seven seconds and a half, so that what is read of it is the same on any machine."""
    TITLE = "other song.wav"

    def setUp(self):
        super().setUp()
        song = self.stage.root / self.TITLE
        with wave.open(str(song), "wb") as sound:
            sound.setparams((1, 2, 8000, 0, "NONE", ""))
            sound.writeframes(bytes(60 * 16000))
        self.other = subprocess.Popen(
            ["mpv", "--no-config", "--load-scripts=no", "--script=/usr/lib/mpv-mpris/mpris.so", "--no-video", "--really-quiet",
             "--ao=null", "--pause", "--start=7.5", str(song)], env=self.stage.own())
        self.addCleanup(self.quit_other)

    def quit_other(self):
        self.other.terminate()
        self.other.wait(timeout=eyes.PATIENCE)

    def is_shown(self, text):
        return text in self.stage.texts_in(self.stage.player())

    def choose_source(self):
        """From the menu, by keys: the other player stands under the own sound. False when it was not there yet."""
        hands.press("alt+m", "u", "Down", "Return")
        deadline = time.monotonic() + 3
        while not self.is_shown(self.TITLE) and time.monotonic() < deadline:
            time.sleep(0.05)
        if not self.is_shown(self.TITLE):
            hands.press("Escape", "Escape")
        return self.is_shown(self.TITLE)

    def test_its_song_is_shown_moved_and_stamped_until_it_quits(self):
        s = self.stage
        s.start(lyrics=s.file("song.lrc", "one\ntwo\n"))
        hands.click(eyes.place(eyes.find(s.player(), "list", "Playlist")))
        s.wait(self.choose_source, "the other player's song in the window")
        s.wait_position(7)
        s.come_back()
        s.forward(9)
        hands.press("space")
        s.wait(lambda: s.rows()[0] in ("[00:09:49]one", "[00:09:50]one"), "the other player's time in front of the line")
        self.quit_other()
        s.wait(lambda: self.is_shown("has ended; the player's own sound is the source again"), "that the other one has ended")
        s.wait(lambda: self.is_shown("First Light"), "the own song again")
        s.wait_position(0)
        s.forward(2)
        s.stamp(1, "[00:02:00]two")
