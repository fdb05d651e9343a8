"""Folders that the player watches: their new songs join the list by themselves, also after the next start."""
import os
import time

import eyes
import hands
from case import Case
from test_player import FIRST_LIGHT, sound


class WatchedFolders(Case):
    def wait_songs(self, *names):
        self.stage.wait_songs(FIRST_LIGHT, *names)

    def add(self, *names):
        """Songs whose copying ended a minute ago."""
        for name in names:
            os.utime(self.stage.file(self.folder / name, sound(1)), (time.time() - 60,) * 2)

    def wait_menus(self, count):
        self.stage.wait(lambda: hands.count_menus() == count, f"{count} menus")

    def test_new_songs_of_a_watched_folder_join_the_list_until_it_is_no_longer_watched(self):
        s = self.stage
        self.folder = s.root / "Music"
        self.add("a.wav", "words.lrc")
        s.start()
        s.open_player_menu("w")
        hands.press("w")
        s.fill_panel("Watch a folder for new songs", self.folder)
        self.wait_songs("a")
        self.add("Album/1.wav", "Album/2.wav")
        self.wait_songs("a", "1", "2")
        (self.folder / "a.wav").unlink()
        self.wait_songs("a (No such file or directory)", "1", "2")
        self.assertIn("First Light", eyes.name(s.player()), "the place is kept")
        hands.click(eyes.place(s.song_rows()[2]))
        hands.press("Delete")
        self.wait_songs("a (No such file or directory)", "2")
        s.close_player()
        self.folder.rename(s.root / "unplugged")
        s.start()
        self.wait_songs("a", "2")
        s.open_player_menu("w")
        s.picture("watched")
        hands.press("Escape", "Escape")
        self.wait_menus(0)
        (s.root / "unplugged").rename(self.folder)
        self.add("b.wav")
        self.wait_songs("a", "2", "b")
        s.open_player_menu("w")
        hands.press("Down", "Right")
        self.wait_menus(3)
        hands.press("s")
        self.wait_menus(0)
        kept = s.config / "Sonivo/Sonivo_Choices.arc"
        s.wait(lambda: b"Wtch" not in kept.read_bytes(), "no folder watched")
