"""Whatever ends a menu, a dialog or a mode switch, the lyrics have the keyboard."""
import hands
from case import Case

FREE_EDIT = "ctrl+e"


class LyricsKeepTheKeyboard(Case):
    def test_every_way_out_of_a_menu_and_a_mode_switch_after_it_give_the_keyboard_back(self):
        s = self.start()
        ways = (("F10", "Escape"), ("Alt_L",), ("alt+h", "Escape"), ("alt+f", "Right", "Escape"), ("F10", "Down", "F10"),
                ("alt+f", "Down", "Down", "Right", "Escape", "Escape"))
        for way in ways:
            with self.subTest(keys=way):
                hands.press(*way)
                s.wait_focus("Lyrics")
                s.stamp(0, "[00:00:00]one")
                hands.press("BackSpace")
                s.wait_rows("one")
        hands.press("F10", "Escape", FREE_EDIT)
        s.wait_text("one\n")
        typed = ""
        for number, way in enumerate(ways):
            with self.subTest(keys=way, mode="free edit"):
                hands.press(*way)
                s.wait_focus("Lyrics")
                hands.write(str(number))
                typed += str(number)
                s.wait_text(typed + "one\n")
        hands.press("F10", "Escape", "ctrl+t")
        s.wait_focus("Lyrics")
        s.stamp(0, f"[00:00:00]{typed}one")

    def test_dialog_opened_after_a_menu_was_left_gives_the_keyboard_back(self):
        s = self.start("[00:01:00]one\n")
        for switch, has_it in (("ctrl+t", self.can_stamp), (FREE_EDIT, self.can_type)):
            with self.subTest(mode=switch):
                hands.press(switch)
                s.wait_focus("Lyrics")
                hands.press("alt+h", "Escape")
                s.choose("Edit", "Shift all time tags…")
                s.wait_window("Shift all time tags")
                hands.press("Escape")
                s.wait_no_window()
                s.wait_focus("Lyrics")
                has_it()

    def can_stamp(self):
        hands.press("plus")
        self.stage.wait_rows("[00:01:01]one")

    def can_type(self):
        hands.write("x")
        self.stage.wait_text("x[00:01:01]one\n")
