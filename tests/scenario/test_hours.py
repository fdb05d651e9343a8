"""Hours of work with the keyboard: mending, shifting, following the song, finding, and keys of one's own."""
import eyes
import hands
from case import Case

LYRICS = "[00:01:00]one\n[00:02:00]two\n[00:03:00]three\n"


class Mending(Case):
    def test_one_wrong_line_takes_two_keys(self):
        s = self.start(LYRICS)
        hands.press("Down")
        s.wait_selected(1)
        hands.press("Return")
        s.wait_status("Playing from line 2")
        s.wait_position(2)
        hands.press("space")
        s.wait(lambda: s.rows()[1] == "[00:02:00]two", "the line stamped again")
        hands.press("Up", "period", "comma", "shift+period", "ctrl+comma")
        s.wait(lambda: s.rows()[1] == "[00:01:60]two", "the line nudged by all three steps")
        s.wait_status("Tag nudged by -500[ms]")

    def test_all_are_shifted_by_a_key_an_amount_and_return(self):
        s = self.start(LYRICS)
        title = "Shift all time tags"
        for amount, way in (("1000", lambda: s.choose("Edit", title + "…")), ("-1250", lambda: hands.press("ctrl+m"))):
            way()
            s.wait_window(title)
            hands.write(amount)
            hands.press("Return")
            s.wait_status(f"All tags shifted by {amount} [ms]")
            s.wait_focus("Lyrics")
        s.wait_rows("[00:00:75]one", "[00:01:75]two", "[00:02:75]three")
        s.click_button(title + "…")
        s.wait_window(title)
        hands.press("Escape")
        s.come_back()
        hands.press("Down", "ctrl+shift+m")
        s.wait(lambda: s.other() and "line 2" in eyes.name(s.other()), "the title that names the line")
        hands.press("1", "0", "0", "0", "Return")
        s.wait_rows("[00:00:75]one", "[00:02:75]two", "[00:03:75]three")
        hands.press("ctrl+z", "ctrl+z", "ctrl+z")
        s.wait_rows(*LYRICS.split())


class Going(Case):
    def test_problems_and_lines_without_a_tag(self):
        s = self.start("[00:05:00]one\ntwo\n[00:04:00]three\n")
        s.wait(lambda: s.row(2).get_description() == "earlier than the line above", "the sign in row 3")
        hands.press("F8")
        s.wait_status("Line 3: earlier than the line above")
        s.wait_selected(2)
        hands.press("shift+F7")
        s.wait_status("No time tag: line 2")
        s.wait_selected(1)
        hands.press("f")
        s.wait_status("The list does not follow the song")
        hands.press("ctrl+Home")
        s.wait_selected(0)

    def test_text_is_found_and_replaced_in_both_modes(self):
        s = self.start("[00:01:00]One 1\ntwo\n")
        hands.press("ctrl+f")
        s.wait_focus("Find")
        hands.write("one")
        hands.press("Return")
        s.wait_status("Found in line 1")
        hands.press("Escape")
        s.wait_focus("Lyrics")
        hands.press("ctrl+e", "ctrl+h")
        s.wait_focus("Find")
        hands.write("1")
        hands.press("Return")
        s.wait_status("Found in line 1")
        s.picture("find_bar")
        hands.click(eyes.place(eyes.find(s.window(), "push button", "Replace all")))
        s.wait_text("[00:01:00]One \ntwo\n")
        hands.press("Escape", "ctrl+z")
        s.wait_text("[00:01:00]One 1\ntwo\n")
