"""One key plays a part of the selected line; a loop follows the selection; clicks at the tags."""
import hands
from case import Case


class Listening(Case):
    def test_a_line_is_heard_by_one_key_and_the_song_pauses_where_that_began(self):
        s = self.start("[00:03:00]one\n[00:06:00]two\nthree\n")
        hands.press("3")
        s.wait_status("Playing line 1")
        s.wait_position(5)
        s.wait_position(3)
        hands.press("2", "Down", "1")
        s.wait_status("Playing line 2")
        s.wait_position(5)
        hands.press("4")
        s.wait_position(8)
        hands.press("5")
        s.wait_status("Looping over line 2")
        s.wait_position(6)
        hands.press("Up")
        s.wait_status("Looping over line 1")
        for _ in range(2):
            s.wait_position(5)
            s.wait_position(3)
        hands.press("5")
        s.wait_status("Loop off")
        s.wait_position(3)
        hands.press("End", "2")
        s.wait_status("This line has no time tag yet")

    def test_clicks_are_switched_by_a_key_and_kept(self):
        s = self.start("[00:01:00]one\n[00:02:00]two\n")
        self.assertNotIn("Clicks at the time tags", s.marked_in_menus(s.window()))
        hands.press("ctrl+k", "ctrl+space")
        s.wait(lambda: "Clicks at the time tags" in s.marked_in_menus(s.window()), "the mark in the menu")
        s.wait_position(2)
        s.close_player()
        s.start(s.lyrics_file)
        self.assertIn("Clicks at the time tags", s.marked_in_menus(s.window()))
