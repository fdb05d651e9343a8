"""The player's own window: its list of songs, and what is found again."""
import struct
import time

import eyes
import hands
import stage
from case import Case

FIRST_LIGHT = "First Light — The Sonivo Demo Band"


def sound(seconds=60, **told):
    """Silence with tags: INAM the title, IART the artist."""
    chunks = b"".join(name.encode() + struct.pack("<I", len(text)) + text + b"\0" * (len(text) % 2)
                      for name, text in told.items())
    told = b"LIST" + struct.pack("<I", len(chunks) + 4) + b"INFO" + chunks
    kind = b"WAVEfmt " + struct.pack("<IHHIIHH", 16, 1, 1, 8000, 16000, 2, 16)
    data = b"data" + struct.pack("<I", seconds * 16000) + bytes(seconds * 16000)
    return b"RIFF" + struct.pack("<I", len(kind + told + data)) + kind + told + data


class ThePlayersList(Case):
    def setUp(self):
        super().setUp()
        self.others = [self.stage.file(name, sound()) for name in ("b.wav", "c.wav")]

    def row(self, index):
        return eyes.place(self.stage.song_rows()[index])

    def test_songs_are_dropped_moved_and_removed_and_found_again(self):
        s = self.stage
        s.start()
        s.wait_songs(FIRST_LIGHT)
        hands.drop_files(eyes.name(s.player()), eyes.place(s.playlist()), self.others)
        s.wait_songs(FIRST_LIGHT, "b", "c")
        hands.drag(self.row(2), self.row(0))
        s.wait_songs("c", FIRST_LIGHT, "b")
        hands.press("alt+Down")
        s.wait_songs(FIRST_LIGHT, "c", "b")
        hands.click(self.row(2))
        hands.press("Delete")
        s.wait_songs(FIRST_LIGHT, "c")
        hands.press("Right")
        s.wait_position(5)
        s.close_player()
        s.start(songs=[])
        s.wait_songs(FIRST_LIGHT, "c")
        s.wait_position(5)

    def test_the_arrow_keys_choose_a_song_as_soon_as_the_window_is_in_front(self):
        s = self.stage
        s.start(songs=[str(path) for path in (s.song, *self.others)])
        hands.click(eyes.place(eyes.find(s.player(), "label", "0:00")))
        hands.press("Down", "Down", "Return")
        s.wait(lambda: eyes.name(s.player()) == "Sonivo – c", "the third song")

    def test_songs_that_were_never_played_show_what_their_files_say(self):
        s = self.stage
        s.file("album/1.wav", sound(65, INAM=b"One\r\n\tMorning", IART="Jürgen".encode()))
        s.file("album/2.wav", sound(3, INAM=b"x" * 5000))
        s.file("album/3.wav", sound(2))
        s.file("album/4.mp3", "no sound at all")
        s.file("album/5.wav", sound(3, INAM=b"Last"))
        s.start(songs=[str(s.song), str(s.root / "album")])
        s.wait_songs(FIRST_LIGHT, "One Morning — Jürgen", "x" * 1024, "3", "4", "Last")
        s.close_player()
        kept = (s.config / "Sonivo/Playlist.m3u8").read_text()
        for part in ("#EXTINF:65,Jürgen - One Morning\n", "#EXTINF:2,3\n", "#EXTINF:-1,4\n"):
            self.assertIn(part, kept)

    def test_what_cannot_be_played_says_why_and_the_next_song_goes_on(self):
        s = self.stage
        empty = s.file("empty.mp3", "")
        songs = s.file("songs.m3u", f"gone.mp3\nsongs.m3u\nempty.mp3\n{s.song}\n")
        s.start(songs=[str(songs)])
        shown = s.texts_in(s.player())
        for part in (f"Cannot play {empty}: the file is empty", "songs.m3u contains itself", "cannot be played: "):
            self.assertIn(part, shown)


class AnotherPlayerAsSource(Case):
    """A real one, paused at seven seconds and a half, so that what is read of it is the same on any machine."""
    TITLE = "other song.wav"

    def setUp(self):
        super().setUp()
        self.other = self.run_beside(
            ["mpv", "--no-config", "--load-scripts=no", "--script=/usr/lib/mpv-mpris/mpris.so", "--no-video", "--really-quiet",
             "--ao=null", "--pause", "--start=7.5", str(self.stage.file(self.TITLE, sound()))])

    def is_shown(self, text):
        return text in self.stage.texts_in(self.stage.player())

    def choose_source(self, *keys):
        self.stage.open_player_menu("u")
        hands.press(*keys)
        self.stage.wait(lambda: hands.count_menus() == 0, "the menus closed")

    def choose_other(self):
        """The item after the own sound, which is chosen again when the other player is not there yet."""
        self.choose_source("Down", "Return")
        deadline = time.monotonic() + 3
        while not self.is_shown(self.TITLE) and time.monotonic() < deadline:
            time.sleep(0.05)
        return self.is_shown(self.TITLE)

    def test_its_song_is_shown_moved_and_stamped_until_it_quits(self):
        s = self.start("one\ntwo\n")
        s.wait(self.choose_other, "the other player's song in the window")
        self.choose_source("Return")
        s.wait(lambda: not self.is_shown(self.TITLE), "the own song")
        s.wait(self.choose_other, "the other player's song again")
        s.wait_position(7)
        s.come_back()
        s.forward(9)
        hands.press("space")
        s.wait(lambda: s.rows()[0] in ("[00:09:49]one", "[00:09:50]one"), "the other player's time in front of the line")
        self.other.terminate()
        s.wait(lambda: self.is_shown("was closed. The source is this player again."), "that the other one has ended")
        s.wait(lambda: self.is_shown("First Light"), "the own song again")
        s.wait_position(0)
        s.forward(2)
        s.stamp(1, "[00:02:00]two")
