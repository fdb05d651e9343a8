"""One performance: the real player with the editor in it, with a song, files and settings of its own."""
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time

import eyes
import hands
import settings
from eyes import wait_until

BIN = pathlib.Path(os.environ["SCENARIO_BIN"])
SONG = pathlib.Path(os.environ["SCENARIO_SONG"])
PICTURES = pathlib.Path(os.environ["SCENARIO_PICTURES"])
APP = "Vesmo Editor"


class Stage:
    """The folder of a performance, in which the program can be started more than once."""

    def __init__(self):
        self.root = pathlib.Path(tempfile.mkdtemp(prefix="scenario-"))
        self.home = self.root / "home"
        self.home.mkdir()
        self.config = self.root / "settings" / "KOREVA"
        self.song = self.root / "song.opus"
        shutil.copy(SONG, self.song)
        self.program = None

    def file(self, name, data):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data if isinstance(data, bytes) else data.encode())
        return path

    def set_preferences(self, **fields):
        settings.write_record(self.config / "Shared/VesmoShared_Prefs.arc", fields)

    def set_language(self, language_file):
        self.set_preferences(LLTF=settings.text(language_file))

    def open_display_at_start(self):
        """As after an end at which the lyrics display was open."""
        settings.write_record(self.config / "VesmoD/VesmoD_ExitStates.arc", {"Open": settings.flag(True)})

    def log_opened_files(self):
        """Replaces the desktop's opener; returns the environment for that, and where it writes what it is to open."""
        opened = self.root / "opened"
        self.file("xdg-open", f'#!/bin/sh\necho "$1" >>"{opened}"\n').chmod(0o755)
        return {"PATH": f"{self.root}:{os.environ['PATH']}"}, opened

    def start(self, lyrics=None, **more):
        """Returns when the editor has the keyboard (and shows the lyrics, if any) and the player First Light."""
        self.launch(lyrics, **more)
        wait_until(lambda: self.window(), "the editor's window")
        wait_until(lambda: "First Light" in eyes.name(self.player()), "the song loaded by the player")
        if lyrics:
            self.wait_title(lyrics.name)
        self.wait_focus("Lyrics")

    def launch(self, lyrics=None, prefix=(), environment=None, songs=None):
        songs = [str(self.song)] if songs is None else songs
        words = [*prefix, str(BIN / "sonivo"), "--paused"]
        if lyrics:
            words += ["--edit", str(lyrics)]
        with open(self.root / "program.log", "ab") as log:
            self.program = subprocess.Popen([*words, *songs], env={**self.own(), **(environment or {})}, stderr=log, stdout=log)

    def own(self):
        """The environment of every program of this performance."""
        return {**os.environ, "HOME": str(self.home), "XDG_CONFIG_HOME": str(self.root / "settings"),
                "XDG_STATE_HOME": str(self.root / "state")}

    def application(self):
        if self.program.poll() is not None:
            raise AssertionError(f"the program ended by itself, with {self.program.returncode}")
        return eyes.application(self.program.pid)

    def windows(self):
        application = self.application()
        return eyes.children(application) if application else []

    def window(self):
        return next((w for w in self.windows() if eyes.name(w).endswith(APP) and eyes.find(w, "menu bar")), None)

    def player(self):
        return next(w for w in self.windows() if eyes.name(w).startswith("Sonivo"))

    def other(self):
        """A window in front of the editor's: a question, a panel, a dialog."""
        own = (self.window(), self.player())
        return next((w for w in self.windows() if w not in own and "showing" in eyes.states(w)), None)

    def title(self):
        return eyes.name(self.window())

    def wait_title(self, document):
        wait_until(lambda: self.title() == f"{document} - {APP}", f"the title of {document}")

    def status(self):
        return eyes.name(eyes.find(self.window(), "status bar"))

    def wait_status(self, text):
        wait_until(lambda: text in self.status(), f"{text!r} in the status bar")

    def wait(self, look, what):
        return wait_until(look, what)

    def lyrics(self):
        """The list or the text, whichever is shown."""
        return next(n for n in eyes.below(self.window())
                    if eyes.name(n) == "Lyrics" and "showing" in eyes.states(n))

    def rows(self):
        return [eyes.name(row) for row in eyes.children(self.lyrics())]

    def selected(self):
        return next((i for i, row in enumerate(eyes.children(self.lyrics())) if "selected" in eyes.states(row)), -1)

    def row(self, index):
        return eyes.children(self.lyrics())[index]

    def stamp(self, row, line):
        """Presses the space bar, and looks for what that makes of the row."""
        hands.press("space")
        wait_until(lambda: self.rows()[row] == line, f"{line!r} in row {row}")

    def text(self):
        return eyes.text_of(self.lyrics())

    def wait_text(self, text):
        wait_until(lambda: self.text() == text, f"the text {text!r}")

    def position(self):
        """Of the song, in seconds, as the player shows it."""
        shown = [eyes.name(label) for label in eyes.find_all(self.player(), "label")]
        minutes, seconds = next(text for text in shown if text[-3:-2] == ":").split(":")
        return int(minutes) * 60 + int(seconds)

    def wait_position(self, seconds):
        wait_until(lambda: self.position() == seconds, f"the song at {seconds} s")

    def forward(self, seconds):
        """By one key press, to that second."""
        hands.press("ctrl+Right")
        self.wait_position(seconds)

    def wait_speed(self, shown):
        wait_until(lambda: eyes.name(eyes.find(self.player(), "combo box")) == shown, f"the speed {shown}")

    def wait_rows(self, *rows):
        wait_until(lambda: self.rows() == list(rows), f"the rows {rows}")

    def wait_selected(self, row):
        wait_until(lambda: self.selected() == row, f"row {row} selected")

    def wait_focus(self, name):
        def has_it():
            node = eyes.focused(self.window())
            return node and "active" in eyes.states(self.window()) and eyes.name(node) == name
        wait_until(has_it, f"the keyboard at {name}")

    def playlist(self):
        return eyes.find(self.player(), "list", "Playlist")

    def focus_playlist(self):
        hands.click(eyes.place(self.playlist()))
        wait_until(lambda: "active" in eyes.states(self.player()), "the player with the keyboard")

    def song_rows(self):
        return eyes.children(self.playlist())

    def wait_songs(self, *names):
        wait_until(lambda: [eyes.name(row) for row in self.song_rows()] == list(names), f"the songs {names}")

    def open_player_menu(self, letter):
        """A submenu of the player's button; a key that came too early is pressed again."""
        def is_open(count, begin):
            begin()
            deadline = time.monotonic() + 2
            while hands.count_menus() < count and time.monotonic() < deadline:
                time.sleep(0.02)
            return hands.count_menus() == count
        wait_until(lambda: is_open(1, lambda: (self.focus_playlist(), hands.press("alt+m"))), "the player's menu")
        wait_until(lambda: is_open(2, lambda: hands.press(letter)), f"its submenu {letter}")

    def wait_closed(self):
        """The editor's window is gone; the player stays."""
        wait_until(lambda: not self.window(), "the editor's window gone")

    def button(self, name):
        bar = eyes.find(self.window(), "tool bar")
        return next(node for node in eyes.children(bar) if eyes.name(node) == name)

    def click_button(self, name):
        hands.click(wait_until(lambda: eyes.place(self.button(name)), f"the button {name}"))

    def menu_item(self, *names):
        node = eyes.find(self.window(), "menu bar")
        for depth, name in enumerate(names):
            if depth:
                node = eyes.find(node, "popup menu")
            node = next(n for n in eyes.children(node) if eyes.name(n) == name)
        return node

    def choose(self, *names):
        """By the keyboard: the letter of the menu, then the arrow keys."""
        hands.press("alt+" + names[0][0].lower())
        for depth in range(1, len(names)):
            menus = names[:depth]
            wait_until(lambda: "showing" in eyes.states(self.popup(menus)), f"the menu {menus[-1]} open")
            self.go_down_to(names[:depth + 1])
            hands.press("Return" if depth + 1 == len(names) else "Right")

    def popup(self, menus):
        return eyes.find(self.menu_item(*menus), "popup menu")

    def go_down_to(self, names):
        for _ in range(20):
            before = self._highlighted(names[:-1])
            if before == names[-1]:
                return
            hands.press("Down")
            wait_until(lambda: self._highlighted(names[:-1]) != before, f"another item than {before}")
        raise AssertionError(f"{names} cannot be reached by the arrow keys")

    def _highlighted(self, menus):
        return next((eyes.name(n) for n in eyes.children(self.popup(menus)) if "focused" in eyes.states(n)), None)

    def choose_by_mouse(self, *names, held=None):
        for depth in range(len(names)):
            item = wait_until(lambda: self.menu_item(*names[:depth + 1]), f"{names[depth]} in its menu")
            wait_until(lambda: "showing" in eyes.states(item) or depth == 0, f"{names[depth]} on the screen")
            last = depth + 1 == len(names)
            if depth == 0 or last:
                hands.click(eyes.place(item), held=held if last else None)
            else:
                hands.move(eyes.place(item))

    def wait_question(self, part):
        """Returns the question in front of the editor whose text holds this part."""
        def look():
            for window in self.windows():
                if eyes.role(window) == "alert" and any(part in eyes.name(n) for n in eyes.find_all(window, "label")):
                    return window
            return None
        return wait_until(look, f"a question with {part!r}")

    def answer(self, part, label):
        question = self.click_answer(part, label)
        wait_until(lambda: self._is_gone(question), f"the question {part!r} gone")

    def click_answer(self, part, label):
        question = self.wait_question(part)
        hands.click(eyes.place(eyes.find(question, "push button", label)))
        return question

    def _is_gone(self, window):
        return not any(other == window for other in self.windows())

    def wait_no_window(self):
        wait_until(lambda: self.other() is None, "no window in front of the editor")

    def wait_window(self, title):
        """Another window than the editor's, once it has the keyboard."""
        def look():
            return next((w for w in self.windows() if eyes.name(w) == title and "active" in eyes.states(w)), None)
        return wait_until(look, f"the window {title!r} with the keyboard")

    def come_back(self):
        """Clicks into the editor's window, where no window manager gives the keyboard back, once others are gone."""
        self.wait_no_window()
        hands.click(eyes.place(eyes.find(self.window(), "status bar")))
        self.wait_focus("Lyrics")

    def texts_in(self, window):
        return "\n".join(eyes.text_of(n) if eyes.role(n) == "text" else eyes.name(n) for n in eyes.below(window))

    def marked_in_menus(self, window):
        return [eyes.name(n) for n in eyes.find_all(eyes.find(window, "menu bar"), "menu item")
                if "checked" in eyes.states(n)]

    def wait_panel(self, title):
        def look():
            window = self.other()
            field = eyes.find(window, "text") if window and eyes.name(window) == title else None
            return field and "focused" in eyes.states(field) and window
        return wait_until(look, f"the panel {title!r} with the keyboard in its name field")

    def fill_panel(self, title, path, then_asks=False):
        panel = self.wait_panel(title)
        hands.press("ctrl+a")
        hands.write(str(path))
        wait_until(lambda: eyes.text_of(eyes.find(panel, "text")) == str(path), f"{path} in the panel")
        hands.press("Return")
        wait_until(lambda: "showing" not in eyes.states(panel), f"the panel {title!r} gone")
        if not then_asks:
            self.wait_no_window()

    def wait_bytes(self, path, data):
        try:
            wait_until(lambda: path.exists() and path.read_bytes() == data, f"the right bytes in {path.name}")
        except AssertionError as fault:
            raise AssertionError(f"{fault}: {path.read_bytes() if path.exists() else None} instead of {data}") from None

    def save(self, data):
        """By the key; returns when the file holds that."""
        hands.press("ctrl+s")
        self.wait_bytes(self.lyrics_file, data)

    def items_of(self, *menus):
        return eyes.children(self.popup(menus))

    def said(self):
        log = self.root / "program.log"
        return log.read_text(errors="replace")[-3000:] if log.exists() else ""

    def picture(self, name):
        PICTURES.mkdir(parents=True, exist_ok=True)
        subprocess.run(["import", "-window", "root", str(PICTURES / f"{name}.png")], check=False)

    def close_player(self, then=lambda: None):
        """Closes the player's window and waits for the program to end without an error."""
        hands.close_window(eyes.name(self.player()))
        then()
        status = self.program.wait(timeout=eyes.PATIENCE)
        if status:
            raise AssertionError(f"the program ended with {status}")

    def stop(self):
        """Ends the program from outside, if it still runs."""
        if self.program and self.program.poll() is None:
            self.program.send_signal(signal.SIGKILL)
        if self.program:
            self.program.wait()

    def clear_away(self):
        self.stop()
        shutil.rmtree(self.root, ignore_errors=True)
