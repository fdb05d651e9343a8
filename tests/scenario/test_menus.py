"""Every entry of the menus of the player, of its tray item and of the lyrics display does what it says."""
import subprocess
import sys
import time

import eyes
import hands
import settings
from case import Case
from test_player import sound

# Title, artist, album, track, seconds: each column sorts the songs in another order, and their files in a sixth one.
SONGS = {"3": ("Alba", "a", "b", 3, 61), "2": ("Bora", "c", "a", 1, 62), "1": ("Cala", "b", "c", 2, 60)}


def bus(*words):
    """What playerctl prints of this player."""
    done = subprocess.run(["playerctl", "-p", "sonivo", *map(str, words)], capture_output=True, text=True, timeout=60)
    return done.stdout.strip()


class Menus(Case):
    """With a window manager, so that the keyboard is given back when a menu or a dialog has gone."""

    def setUp(self):
        super().setUp()
        self.run_beside(["openbox", "--sm-disable"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.stage.wait(hands.has_window_manager, "the window manager")
        self.environment, self.opened = self.stage.log_opened_files()

    def start(self, text="one\n"):
        s = self.stage
        songs = []
        for name, (title, artist, album, track, seconds) in SONGS.items():
            told = {"INAM": title, "IART": artist, "IPRD": album, "IPRT": str(track)}
            data = sound(seconds, **{key: value.encode() for key, value in told.items()})
            songs.append(str(s.file(f"songs/{name}.wav", data)))
        s.launch(s.file("a.lrc", text), environment=self.environment, songs=songs)
        s.wait(lambda: s.window() and self.titles() == ["Alba", "Bora", "Cala"], "the songs")
        s.wait(lambda: bus("metadata", "title") == "Alba", "the first song")
        self.focus()

    def titles(self):
        return [eyes.name(row).split(" — ")[0] for row in self.stage.song_rows()]

    def player(self):
        return next(w for w in self.stage.windows() if eyes.name(w).startswith("Sonivo") and eyes.role(w) == "frame")

    def focus(self):
        """Clicks above the cover, again if the window was just being placed or the editor's came up."""
        def is_active():
            if "active" in eyes.states(self.player()):
                return True
            left, top, width, _ = eyes.place(self.player())
            hands.click((left, top, width, 10))
            time.sleep(0.1)
            return False
        self.stage.wait(is_active, "the player with the keyboard")

    def choose(self, keys, seen, opens=None):
        """Picks an entry by its keys, from the menu of the button if no other is opened, and looks what comes of it."""
        self.stage.wait(lambda: hands.count_menus() == 0, f"no other menu before {keys}")
        if opens:
            opens()
        else:
            self.focus()
            hands.press("alt+m")
        self.stage.wait(lambda: hands.count_menus() > 0, f"the menu of {keys}")
        hands.press(*keys.split())
        self.stage.wait(seen, f"what {keys} says")

    def each(self, entries, opens=None):
        for keys, seen in entries:
            self.choose(keys, seen, opens)

    def right_click(self, find):
        return lambda: hands.click(eyes.place(find()), button=3)

    def row(self, index):
        """To be clicked: never the same one twice at once, which would be a double click."""
        return self.stage.song_rows()[index]

    def orders(self, *titles):
        return lambda: self.titles() == list(titles)

    def shows(self, title):
        return lambda: any(eyes.name(w) == title and "showing" in eyes.states(w) for w in self.stage.windows())

    def is_opened(self, times):
        return lambda: self.opened.exists() and self.opened.read_text().count("/songs\n") == times

    def choices(self, **wanted):
        record = self.stage.config / "Sonivo/Sonivo_Choices.arc"
        return lambda: record.exists() and all(
            settings.values_of(record.read_bytes(), name) == values for name, values in wanted.items())


class ThePlayersMenus(Menus):
    def test_the_list_is_sorted_and_its_columns_and_the_way_of_playing_are_chosen(self):
        self.start()
        a, b, c = "Alba", "Bora", "Cala"
        self.each([("t a", self.orders(a, c, b)), ("t l", self.orders(b, a, c)), ("t u", self.orders(b, c, a)),
                   ("t e", self.orders(c, a, b)), ("t f", self.orders(c, b, a)), ("t t", self.orders(a, b, c))])
        self.each([("b p", lambda: bus("loop") == "Playlist"), ("b n", lambda: bus("loop") == "None"),
                   ("b o", lambda: bus("loop") == "Track"), ("b s", lambda: bus("shuffle") == "On")])
        for keys in ("b g", "b k", "b c", "m Return", "m Down Return", "m Down Down Return"):
            self.choose(keys, lambda: True)
        hands.click(self.header(), button=3)
        hands.press("Down", "Down", "Down", "Down", "Return")
        self.stage.wait(self.choices(Gpls=[False], Awak=[True], Tray=[True], Clmn=[True, True, True, False, True, False]),
                        "the choices kept")
        self.choose("b u", self.shows("Sound"))
        self.stage.picture("sound")
        hands.press("Escape")
        self.choose("q", lambda: self.stage.program.poll() == 0)
        self.stage.launch(environment=self.environment, songs=[])
        self.stage.wait(lambda: (bus("loop"), bus("shuffle")) == ("Track", "On"), "the order of the last run")

    def test_the_player_stops_after_this_song(self):
        s = self.stage
        self.start()
        self.choose("b t", lambda: True)
        hands.press("space")
        s.wait(lambda: bus("status") == "Playing", "the song")
        bus("position", SONGS["3"][4] - 1)
        s.wait(lambda: bus("status") != "Playing", "the end of the song")
        self.assertEqual(eyes.name(self.player()), "Sonivo – Alba")

    def header(self):
        left, top, width, _ = eyes.place(self.stage.playlist())
        return left, top + 1, width, 20

    def test_songs_are_added_filtered_saved_and_removed(self):
        s = self.stage
        self.start()
        other = s.file("other.wav", sound(INAM=b"Other"))
        saved = s.root / "saved.m3u8"
        self.each([("l", lambda: "focused" in eyes.states(eyes.find(s.player(), "text")))])
        hands.press("Escape")
        for keys, path, seen in [("o", other, self.orders("Alba", "Bora", "Cala", "Other")),
                                 ("s", saved, lambda: saved.exists() and "other.wav" in saved.read_text()),
                                 ("f", s.root / "songs", lambda: self.titles()[4:] == ["Cala", "Bora", "Alba"])]:
            self.choose(keys, lambda: s.other() and eyes.role(eyes.focused(s.other())) == "text")
            hands.write(str(path))
            hands.press("Return")
            s.wait(seen, f"what was chosen by {keys}")
            s.wait_no_window()
        hands.click(eyes.place(self.row(0)))
        self.each([("r", lambda: self.titles()[0] == "Bora"), ("c", lambda: self.titles() == [])])

    def test_the_menus_of_a_song_and_of_the_cover(self):
        s = self.stage
        self.start()
        s.file("songs/1.lrc", "cala\n")
        s.file("songs/2.lrc", "bora\n")
        cover = self.right_click(lambda: next(n for n in eyes.below(s.player()) if eyes.name(n) == "Cover art"))
        def of(index):
            return self.right_click(lambda: self.row(index))
        def clipboard():
            hands.press("ctrl+f", "ctrl+v")
            text = eyes.text_of(eyes.find(s.player(), "text"))
            hands.press("Escape")
            return text
        self.choose("p", lambda: bus("status") == "Playing", cover)
        self.choose("p", lambda: bus("metadata", "title") == "Bora", of(1))
        self.choose("p", lambda: bus("status") == "Paused", cover)
        self.choose("u", self.orders("Alba", "Cala", "Bora"), of(2))
        self.choose("d", self.orders("Cala", "Alba", "Bora"), of(0))
        self.choose("f", self.is_opened(1), of(1))
        self.choose("f", self.is_opened(2), cover)
        self.choose("l", lambda: s.title().startswith("1.lrc"), of(0))
        self.choose("l", lambda: s.title().startswith("2.lrc"), cover)
        self.focus()
        self.choose("c", lambda: clipboard() == "Alba — a", of(1))
        self.choose("c", lambda: clipboard() == "Bora — c", cover)
        self.choose("n", self.orders("Alba", "Bora", "Cala"), of(0))
        self.choose("r", self.orders("Alba", "Cala"), of(1))

    def test_player_and_plug_ins_are_shown_set_up_and_described_and_the_player_quits(self):
        s = self.stage
        self.start()
        for keys, title, part in (("p", "Vesmo preferences", "Language:"), ("a", "Sonivo", "Sonivo  Ver")):
            self.choose(keys, lambda: part in s.texts_in(s.wait_window(title)))
            hands.press("Escape")
            s.wait(lambda: not self.shows(title)(), f"{title} closed")
        hands.close_window(eyes.name(s.window()))
        s.wait_closed()
        for up, shown, about in ((5, "Untitled - Vesmo Editor", "About Vesmo Editor"),
                                 (4, "Vesmo Display", "About Vesmo Display")):
            steps = "Up " * up + "Right "
            self.each([(steps + "s", self.shows(shown))])
            for keys, title in (("p", "Vesmo preferences"), ("a", about)):
                self.choose(steps + keys, lambda: s.wait_window(title))
                hands.press("Escape")
                s.wait(lambda: not self.shows(title)(), f"{title} closed")
        self.choose("q", lambda: s.program.poll() == 0)


class TheTrayItem(Menus):
    def call(self, path, method, *arguments):
        item = (self.stage.root / "item").read_text()
        words = ["--session", "--dest", item, "--object-path", path, "--method", method, "--", *arguments]
        return subprocess.run(["gdbus", "call", *words], capture_output=True, text=True, check=True, timeout=60).stdout

    def menu(self):
        return self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties.Get", "org.kde.StatusNotifierItem",
                         "Menu").split("'")[1]

    def pick(self, label):
        """The entry has the identifier that the tray is told."""
        layout = self.call(self.menu(), "com.canonical.dbusmenu.GetLayout", "0", "-1", "[]")
        number = layout.split(f"'label': <'{label}'>")[0].rsplit("(", 1)[1].split(",")[0]
        self.call(self.menu(), "com.canonical.dbusmenu.Event", number, "clicked", "<0>", "0")

    def activate(self):
        self.call("/StatusNotifierItem", "org.kde.StatusNotifierItem.Activate", "0", "0")

    def test_the_window_goes_there_and_comes_back_and_its_menu_works(self):
        s = self.stage
        settings.write_record(s.config / "Sonivo/Sonivo_Choices.arc", {"Tray": settings.flag(True)})
        item = s.root / "item"
        self.run_beside([sys.executable, "tray.py", str(item)])
        self.start()
        s.wait(item.exists, "the item in the tray")
        def is_seen():
            return "showing" in eyes.states(self.player())
        for back in (self.activate, lambda: self.pick("_Show Sonivo")):
            hands.close_window(eyes.name(self.player()))
            s.wait(lambda: not is_seen(), "no window")
            back()
            s.wait(is_seen, "the window again")
        for label, seen in (("_Next song", lambda: bus("metadata", "title") == "Bora"),
                            ("_Play / pause", lambda: bus("status") == "Paused"),
                            ("_Quit", lambda: s.program.poll() == 0)):
            self.pick(label)
            s.wait(seen, f"what {label} says")


class TheDisplay(Menus):
    def view(self):
        window = next((w for w in self.stage.windows() if eyes.name(w) == "Vesmo Display"), None)
        return window and next(n for n in eyes.below(window) if eyes.name(n) == "Synchronized lyrics")

    def place(self):
        return eyes.place(self.view())

    def test_full_screen_and_text_size_by_menu_keys_and_mouse_and_its_place_is_kept(self):
        s = self.stage
        s.open_display_at_start()
        self.start("[00:00:00]one\n")
        s.wait(self.view, "the display")
        hands.place_window("Vesmo Display", 600, 560, 500, 200)
        s.wait(lambda: self.place()[2:] == (500, 200), "its new place")
        before, size = self.place(), [hands.bright_points(self.place())]
        menu = self.right_click(self.view)
        def grows():
            return hands.bright_points(self.place()) > size[0] * 1.1
        def is_normal():
            return hands.bright_points(self.place()) == size[0]
        def is_full():
            return self.place() == (0, 0, 1280, 800)
        def is_back():
            return self.place() == before
        ways = [(lambda: self.choose("f", is_full, menu), lambda: self.choose("f", is_back, menu)),
                (lambda: hands.press("F11"), lambda: hands.press("Escape")),
                (lambda: hands.click(self.place(), count=2), lambda: hands.click(self.place(), count=2))]
        for there, back in ways:
            there()
            s.wait(is_full, "the whole screen")
            back()
            s.wait(is_back, "its place again")
        self.each([("l", grows), ("s", is_normal), ("l", grows), ("n", is_normal)], menu)
        for key, seen in (("ctrl+plus", grows), ("ctrl+minus", is_normal), ("ctrl+equal", grows), ("ctrl+0", is_normal)):
            hands.press(key)
            s.wait(seen, f"the text after {key}")
        hands.click(self.place(), held="ctrl", button=4)
        s.wait(grows, "larger text by the wheel")
        large = hands.bright_points(self.place())
        hands.close_window(eyes.name(self.player()))
        s.wait(lambda: s.program.poll() == 0, "the end")
        s.launch(s.root / "a.lrc")
        s.wait(lambda: self.view() and is_back(), "its place of the last time")
        s.wait(lambda: hands.bright_points(self.place()) == large, "the same size again")
