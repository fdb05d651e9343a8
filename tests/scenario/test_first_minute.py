"""What somebody does first: words on the clipboard or beside the song, one key, and the first line is stamped."""
import re

import eyes
import hands
from case import Case

HINT = "Paste the lyrics (Ctrl+V)"


class FirstStamp(Case):
    def play(self):
        hands.press("ctrl+space")
        self.stage.wait(lambda: self.stage.position() >= 1, "the song playing")

    def wait_first_row_stamped(self, *others):
        s = self.stage
        s.wait(lambda: re.fullmatch(r"\[00:\d\d:\d\d\]one", s.rows()[0]) and s.rows()[1:] == list(others),
               "a tag in the first row")

    def test_text_on_the_clipboard_takes_two_keys(self):
        s = self.stage
        s.start()
        self.assertIn(HINT, eyes.description(s.lyrics()))
        self.play()
        with hands.Clipboard("one\r\ntwo\r\nthree"):
            hands.press("ctrl+v", "space")
            self.wait_first_row_stamped("two", "three")
        s.wait_selected(1)
        self.assertEqual(eyes.description(s.lyrics()), "")
        hands.press("ctrl+z", "ctrl+z")
        s.wait_rows("")
        s.choose("Edit", "Redo")
        s.wait_rows("one", "two", "three")

    def test_text_beside_the_song_takes_one_key(self):
        s = self.stage
        s.file("song.txt", "one\ntwo\n")
        s.start()
        self.play()
        s.wait_title("song.txt")
        hands.press("space")
        self.wait_first_row_stamped("two")


class Lines(Case):
    def test_lines_are_selected_moved_copied_and_deleted(self):
        s = self.start("one\ntwo\nthree\nfour\n")
        hands.press("shift+Down")
        s.wait(lambda: ["selected" in eyes.states(row) for row in eyes.children(s.lyrics())] == [True, True, False, False],
               "two rows selected")
        hands.press("alt+Down")
        s.wait_rows("three", "one", "two", "four")
        hands.press("ctrl+c", "End", "shift+Insert")
        s.wait_rows("three", "one", "two", "four", "one", "two")
        hands.click(eyes.place(s.row(0)))
        hands.click(eyes.place(s.row(2)), held="shift")
        hands.press("ctrl+Delete")
        s.wait_rows("four", "one", "two")
        s.choose("Edit", "Lines", "Join lines")
        s.wait_rows("four one", "two")
        hands.press("ctrl+z", "ctrl+z")
        s.wait_rows("three", "one", "two", "four", "one", "two")


class Dropping(Case):
    def test_a_song_dropped_on_the_editor_plays_and_shows_its_lyrics(self):
        s = self.start("mine\n")
        other = s.root / "other.opus"
        other.write_bytes(s.song.read_bytes())
        s.file("other.lrc", "sung\n")
        hands.drop_files(s.title(), eyes.place(s.lyrics()), [other])
        s.wait_title("other.lrc")
        s.wait_rows("sung")

    def test_lyrics_dropped_on_the_player_open_and_pictures_are_refused(self):
        s = self.start("mine\n")
        dropped = [s.file("cover.png", b"\x89PNG"), s.file("new.lrc", "dropped\n")]
        player = eyes.name(s.player())
        hands.drop_files(player, eyes.place(s.player()), dropped)
        s.wait_title("new.lrc")
        s.wait(lambda: "Neither a song nor lyrics" in s.texts_in(s.player()), "a word about the picture")
