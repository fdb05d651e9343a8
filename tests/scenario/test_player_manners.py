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

    def list(self):
        return self.stage.playlist()

    def rows(self):
        """Those that are not hidden."""
        return [eyes.name(row) for row in eyes.children(self.list()) if eyes.place(row)[3] > 0]

    def start_in_list(self):
        self.stage.start(songs=self.songs())
        self.stage.wait(lambda: len(eyes.children(self.list())) == 5 and "Various" in self.rows()[4], "all songs")
        self.focus()

    def focus(self):
        self.stage.focus_playlist()

    def wait_song(self, title):
        self.stage.wait(lambda: eyes.name(self.stage.player()) == f"Sonivo – {title}", f"the song {title}")

    def chosen(self):
        return next((eyes.name(n).split(" — ")[0] for n in eyes.children(self.list()) if "selected" in eyes.states(n)), None)

    def pick(self, letter):
        hands.press("alt+m")
        self.stage.wait(lambda: hands.count_menus() > 0, "the menu")
        hands.press(letter)

    def cover(self):
        return next(n for n in eyes.below(self.stage.player()) if eyes.name(n) == "Cover art")

    def test_a_typed_name_is_found_and_is_no_command(self):
        s = self.stage
        self.start_in_list()
        hands.write("nirvaxpan")  # mistyped, and full of commands
        s.wait(lambda: self.chosen() == "Nirvana", "the song that was meant")
        self.wait_song("First Light")
        hands.press("Escape")
        hands.press("n")
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

    def test_preferences_about_and_quitting_by_menu_and_key(self):
        s = self.stage
        s.lyrics_file = s.file("a.lrc", "one\n")
        s.start(s.lyrics_file)
        s.stamp(0, "[00:00:00]one")
        self.focus()
        self.pick("a")
        s.wait(lambda: any("Sonivo  Ver" in eyes.name(n) for n in eyes.find_all(s.application(), "label")), "its version")
        hands.press("Return")
        self.focus()
        self.pick("p")
        s.wait_window("Vesmo preferences")
        hands.press("Escape")
        self.focus()
        hands.press("ctrl+q")
        s.click_answer("has unsaved changes", "No")
        self.assertEqual(s.program.wait(timeout=eyes.PATIENCE), 0)

    def test_a_language_chosen_in_the_preferences_is_spoken_at_once_and_another_setting_leaves_it(self):
        s = self.stage
        s.start(environment=GERMAN, lyrics=s.file("a.lrc", "one\n"))
        s.wait(lambda: eyes.find(s.player(), "list", "Wiedergabeliste"), "the desktop's language")
        hands.press("ctrl+p")
        window = s.wait_window("Vesmo preferences")
        hands.click(eyes.place(eyes.find(window, "check box", "Keep the editor on top")))
        hands.press("Escape")
        record = s.config / "Shared/VesmoShared_Prefs.arc"
        s.wait(lambda: record.exists() and b"LLTF" not in record.read_bytes(), "the setting without a language")
        s.stop()
        s.start(environment=GERMAN, lyrics=s.file("a.lrc", "one\n"))
        s.wait(lambda: eyes.find(s.player(), "list", "Wiedergabeliste"), "the desktop's language again")
        hands.press("ctrl+p")
        window = s.wait_window("Vesmo preferences")
        hands.click(eyes.place(eyes.labelled(window, "Language:")))
        hands.press("End", "Return")
        s.wait(lambda: eyes.find(s.player(), "list", "プレイリスト"), "the player in Japanese at once")

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
        self.focus()
        hands.press("ctrl+f")
        def parts():
            message = eyes.find(s.player(), "label", "No sound device: playing silently")
            return [eyes.place(part) for part in (self.cover(), message) if part]
        s.wait(lambda: all(above[1] + above[3] <= below[1] for above, below in zip(parts(), parts()[1:])),
               "room for the message and the filter")
        s.wait(lambda: eyes.place(self.list())[3] > 20, "some rows of the list")
