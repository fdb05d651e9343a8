"""Tag input mode against the real player: stamps, nudges, another try, and the way to the player."""
import eyes
import hands
from case import Case

LYRICS = "one\ntwo\nthree\n"


class Stamping(Case):
    def test_a_song_is_timed_corrected_and_saved(self):
        s = self.start(LYRICS)
        s.stamp(0, "[00:00:00]one")
        s.forward(2)
        s.stamp(1, "[00:02:00]two")
        s.forward(4)
        s.stamp(2, "[00:04:00]three")
        s.wait_selected(2)
        hands.press("plus", "plus", "minus")
        s.wait_rows("[00:00:00]one", "[00:02:00]two", "[00:04:01]three")
        s.wait_status("Tag nudged by -10[ms]")
        hands.press("Home")
        s.wait_selected(0)
        hands.press("Delete")
        s.wait_rows("one", "[00:02:00]two", "[00:04:01]three")
        s.wait_status("Tag deleted from line 1")
        s.save(b"one\n[00:02:00]two\n[00:04:01]three\n\0")

    def test_backspace_takes_the_last_stamp_back_and_the_song_to_before_it(self):
        s = self.start(LYRICS)
        s.forward(2)
        s.forward(4)
        s.stamp(0, "[00:04:00]one")
        hands.press("BackSpace")
        s.wait_rows("one", "two", "three")
        s.wait_status("Stamp again: line 1")
        s.wait_selected(0)
        s.wait_position(2)
        s.stamp(0, "[00:02:00]one")
        hands.press("Up", "plus", "BackSpace")
        s.wait_status("Nothing to take back: the last change was not a stamp")


class ThePlayer(Case):
    def test_return_and_double_click_go_to_the_time_of_a_line(self):
        s = self.start("[00:10:00]one\n[00:20]two\nthree\n")
        hands.press("Return")
        s.wait_status("Playing from line 1")
        s.wait_position(10)
        hands.click(eyes.place(s.row(1)), count=2)
        s.wait_status("Playing from line 2")
        s.wait_position(20)
        hands.press("Down", "Return")
        s.wait_status("This line has no time tag yet")
        hands.press("ctrl+Left")
        s.wait_position(18)

    def test_control_and_space_plays_and_the_arrows_change_the_speed(self):
        s = self.start(LYRICS)
        hands.press("ctrl+Up")
        s.wait_speed("1.05×")
        hands.press("ctrl+Down", "ctrl+Down")
        s.wait_speed("0.95×")
        hands.press("ctrl+space")
        s.wait(lambda: s.position() >= 1, "the song playing")
        hands.press("ctrl+space")
        hands.press("space")
        s.wait(lambda: s.rows()[0] > "[00:00:90]one", "a tag of the time that has passed")


class Modes(Case):
    NAMES = ("Tag input, extended tags", "Tag input, standard tags", "Free edit")

    def marked(self):
        s = self.stage
        items = [s.menu_item("Mode", "Tag input", self.NAMES[0]), s.menu_item("Mode", "Tag input", self.NAMES[1]),
                 s.menu_item("Mode", self.NAMES[2])]
        buttons = [s.button(name) for name in self.NAMES]
        return [tuple("checked" in eyes.states(node) for node in nodes).index(True)
                for nodes in (items, buttons) if sum("checked" in eyes.states(node) for node in nodes) == 1]

    def test_marks_of_menu_and_tool_bar_go_with_the_mode(self):
        s = self.start(LYRICS)
        ways = [(1, lambda: hands.press("ctrl+d")), (2, lambda: hands.press("ctrl+e")), (0, lambda: hands.press("ctrl+t")),
                (2, lambda: s.choose("Mode", self.NAMES[2])), (1, lambda: s.choose("Mode", "Tag input", self.NAMES[1])),
                (2, lambda: s.click_button(self.NAMES[2])), (0, lambda: s.click_button(self.NAMES[0]))]
        for mode, way in ways:
            way()
            s.wait(lambda: self.marked() == [mode, mode], f"mode {mode} marked in menu and tool bar")
