"""The manners of the player's window: its keys and menus, its language, and that it comes back where it was."""
import eyes
import hands
from case import Case
from test_player import sound

GERMAN = {"LC_ALL": "", "LC_CTYPE": "C.UTF-8", "LC_MESSAGES": "de_DE.UTF-8"}


class ThePlayersManners(Case):
    def songs(self):
        """First Light and four others, whose names begin with letters that are commands as well."""
        names = ("Night", "Nirvana", "Pumpkin", "Band on the Run")
        files = [str(self.stage.file(f"{name}.wav", sound(INAM=name.encode(), IART=b"Various"))) for name in names]
        return [str(self.stage.song), *files]

    def rows(self):
        """Those that are not hidden."""
        return [eyes.name(row) for row in self.stage.song_rows() if eyes.place(row)[3] > 0]

    def wait_song(self, title):
        self.stage.wait(lambda: eyes.name(self.stage.player()) == f"Sonivo – {title}", f"the song {title}")

    def chosen(self):
        return next((eyes.name(n).split(" — ")[0] for n in self.stage.song_rows() if "selected" in eyes.states(n)), None)

    def test_a_typed_name_is_found_and_is_no_command(self):
        s = self.stage
        s.start(songs=self.songs())
        s.wait(lambda: len(s.song_rows()) == 5 and "Various" in self.rows()[4], "all songs")
        s.focus_playlist()
        hands.write("nirvaxpan")  # mistyped, and full of commands
        s.wait(lambda: self.chosen() == "Nirvana", "the song that was meant")
        self.wait_song("First Light")
        hands.press("Escape", "n")
        self.wait_song("Night")
        hands.press("ctrl+f")
        hands.write("pum van")
        s.wait(lambda: not self.rows(), "no song")
        hands.press("BackSpace", "BackSpace", "BackSpace", "BackSpace")
        s.wait(lambda: [row.split(" — ")[0] for row in self.rows()] == ["Pumpkin"], "the one song")
        hands.press("Return")
        self.wait_song("Pumpkin")
        hands.press("Escape")
        s.wait(lambda: len(self.rows()) == 5, "all songs again")

    def test_the_desktops_language_is_spoken_until_another_is_chosen(self):
        s = self.start(environment=GERMAN)
        s.wait(lambda: eyes.find(s.player(), "list", "Wiedergabeliste"), "the desktop's language")
        hands.press("ctrl+p")
        window = s.wait_window("Vesmo preferences")
        hands.click(eyes.place(eyes.find(window, "check box", "Keep the editor on top")))
        hands.press("Escape")
        record = s.config / "Shared/VesmoShared_Prefs.arc"
        s.wait(lambda: record.exists() and b"LLTF" not in record.read_bytes(), "the setting without a language")
        s.stop()
        s.start(environment=GERMAN)
        s.wait(lambda: eyes.find(s.player(), "list", "Wiedergabeliste"), "the desktop's language again")

    def test_its_place_and_size_come_back_and_the_editor_stays_beside_it(self):
        s = self.stage
        s.start()
        def places():
            return eyes.place(s.player()), eyes.place(s.window())
        hands.place_window(eyes.name(s.player()), 120, 60, 520, 440)
        s.wait(lambda: eyes.place(s.player())[2:] == (520, 440), "the new size")
        s.wait(lambda: eyes.place(s.window())[0] > 120 + 520, "the editor beside the enlarged player")
        before = places()
        s.close_player()
        s.start()
        s.wait(lambda: places() == before, "both windows where they were")
        hands.place_window(eyes.name(s.player()), 120, 60, *hands.smallest_size(eyes.name(s.player())))
        s.wait(lambda: eyes.place(s.player())[2] < 520, "the smallest size")
        volume, menu = (eyes.place(eyes.find(s.player(), *what)) for what in (("slider", "Volume"), ("push button", "Menu")))
        self.assertLessEqual(volume[0] + volume[2], menu[0], "the menu button is on the volume")
        s.focus_playlist()
        hands.press("ctrl+f")
        def parts():
            message = eyes.find(s.player(), "label", "No sound device: playing silently")
            cover = next(n for n in eyes.below(s.player()) if eyes.name(n) == "Cover art")
            return [eyes.place(part) for part in (cover, message) if part]
        s.wait(lambda: all(above[1] + above[3] <= below[1] for above, below in zip(parts(), parts()[1:])),
               "room for the message and the filter")
        s.wait(lambda: eyes.place(s.playlist())[3] > 20, "some rows of the list")
