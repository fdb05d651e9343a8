"""The preferences of the family, with two of its applications: the player with the editor, and the example."""
import os
import socket
import unittest

import eyes
import hands
import stage
from case import Case

COMMON = "KOREVA Common Preferences"
TOOLS = ("Tools", "KOREVA Common Preferences…")


class Example:
    """The other application, in a process of its own, with the same settings."""

    def __init__(self, case):
        of = case.stage
        with open(of.root / "program.log", "ab") as log:
            self.program = case.run_beside([str(stage.BIN / "family_example")], stderr=log, stdout=log)
        eyes.wait_until(lambda: self.window("Family Example"), "the example's window")

    def window(self, title):
        application = eyes.application(self.program.pid)
        return next((w for w in eyes.children(application) if eyes.name(w) == title), None) if application else None

    def open_common(self):
        window = self.window("Family Example")
        hands.click(eyes.place(eyes.find(window, "label")))
        # A keyboard that goes elsewhere during a click takes the click back.
        eyes.wait_until(lambda: "active" in eyes.states(window), "the example with the keyboard")
        hands.click(eyes.place(eyes.find(window, "push button")))

    def wait_shown(self, *texts):
        def look():
            shown = [eyes.name(label) for label in eyes.find_all(self.window("Family Example"), "label")]
            return shown == list(texts)
        eyes.wait_until(look, f"{texts} in the example's window")


class TwoApplications(Case):
    def setUp(self):
        super().setUp()
        self.example = Example(self)
        self.start()
        # Their windows are not to lie on each other, where no window manager places them.
        hands.move_window("Family Example", 20, 640)

    def controls(self, find):
        """The list of formats and the check box, once the window has the keyboard and every control."""
        def look():
            window = find(COMMON)
            return window and "active" in eyes.states(window) and eyes.find(window, "combo box") and eyes.find(window, "check box")
        self.stage.wait(look, "the common preferences with their controls")
        return eyes.find(find(COMMON), "combo box"), eyes.find(find(COMMON), "check box")

    def in_player(self, title):
        return next((w for w in self.stage.windows() if eyes.name(w) == title), None)

    def stored(self, name):
        return (self.stage.config / "Shared" / f"{name}.arc").read_bytes()

    def test_one_window_serves_both_and_what_is_set_reaches_both_and_the_disk(self):
        s, example = self.stage, self.example
        s.choose(*TOOLS)
        formats, flat = self.controls(self.in_player)
        hands.press("Tab", "Down")
        example.wait_shown("Labels look like this: O) Open", "Tool bars are flat.")
        s.menu_item("F) File", "S) Save")
        hands.raise_window(s.title())
        s.wait(lambda: hands.title_under(eyes.place(flat)) == s.title(), "the window covered by the editor's")
        example.open_common()
        s.wait(lambda: hands.title_under(eyes.place(flat)) == COMMON, "the window brought forward")
        self.assertIsNone(example.window(COMMON))
        self.assertEqual(len(eyes.find_all(self.in_player(COMMON), "check box")), 1)
        hands.click(eyes.place(flat))
        example.wait_shown("Labels look like this: O) Open", "Tool bars are raised.")
        s.wait(lambda: b"a) \0" in self.stored("AccKeyFormat") and self.stored("FlatToolBar").endswith(b"\0"), "both stored")
        self.assertEqual(sorted(os.listdir(s.config / "Shared")), ["AccKeyFormat.arc", "FlatToolBar.arc"])
        hands.click(eyes.place(eyes.find(self.in_player(COMMON), "push button", "Cancel")))
        example.wait_shown("Labels look like this: Open", "Tool bars are flat.")
        s.menu_item("File", "Save")
        s.come_back()

    def test_who_has_never_opened_the_window_is_told_and_closing_leaves_the_others_window_alone(self):
        s, example = self.stage, self.example
        example.open_common()
        self.controls(example.window)
        hands.press("Tab", "Down", "Down")
        s.wait(lambda: s.menu_item("F・File"), "the editor's menus updated")
        s.close_player()
        hands.click(eyes.place(self.controls(example.window)[1]))
        example.wait_shown("Labels look like this: O・Open", "Tool bars are raised.")
        hands.close_window("Family Example")
        self.assertEqual(example.program.wait(timeout=eyes.PATIENCE), 0)
        s.start()
        s.menu_item("F・File", "S・Save")

    def test_a_maker_that_is_killed_loses_nothing_and_the_other_opens_the_window_again(self):
        s, example = self.stage, self.example
        example.open_common()
        self.controls(example.window)
        hands.press("Tab", "Down")
        s.wait(lambda: s.menu_item("F) File"), "the editor's menus updated")
        example.program.kill()
        s.come_back()
        s.choose("T) Tools", "S) KOREVA Common Preferences…")
        _, flat = self.controls(self.in_player)
        self.example = Example(self)
        self.example.wait_shown("Labels look like this: O) Open", "Tool bars are flat.")
        hands.move_window("Family Example", 20, 640)
        hands.click(eyes.place(flat))
        self.example.wait_shown("Labels look like this: O) Open", "Tool bars are raised.")
        s.stop()
        self.example.open_common()
        _, flat = self.controls(self.example.window)
        self.assertNotIn("checked", eyes.states(flat))


class ThePort(Case):
    """The port of the window. Whatever else has its name neither blocks the editor nor is trusted."""

    @unittest.skipIf(os.geteuid(), "only root can be somebody else")
    def test_of_another_user_is_told_of(self):
        s = self.stage
        path = stage.pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / "koreva/KOREVAIAPPort"
        path.parent.mkdir(mode=0o700, exist_ok=True)
        path.unlink(missing_ok=True)
        self.addCleanup(path.unlink, missing_ok=True)
        port = socket.socket(socket.AF_UNIX)
        self.addCleanup(port.close)
        port.bind(str(path))
        os.seteuid(65534)  # whoever listens now is who the port belongs to
        try:
            port.listen()
        finally:
            os.seteuid(0)
        s.start()
        s.choose(*TOOLS)
        s.answer("The common preferences cannot be shown", "Understood")
        s.come_back()
        hands.press("ctrl+e")
        s.wait_status("[Edit]")
