"""The lyrics display next to the editor: in time with the song, and following what is edited."""
import eyes
import hands
from case import Case

DISPLAY = "Vesmo Display"
PREFERENCES = "Vesmo preferences"


class Display(Case):
    def window(self):
        return next((w for w in self.stage.windows() if eyes.name(w) == DISPLAY and "showing" in eyes.states(w)), None)

    def view(self):
        return next(n for n in eyes.below(self.window()) if eyes.name(n) == "Synchronized lyrics")

    def wait_line(self, line):
        self.stage.wait(lambda: self.view().get_description() == line, f"{line!r} in the display")

    def start_with_display(self, lyrics):
        self.stage.open_display_at_start()
        self.stage.start(lyrics)
        self.stage.wait(self.window, "the display")

    def test_what_is_stamped_is_shown_at_once_and_the_display_comes_back(self):
        s = self.stage
        lyrics = s.file("song.lrc", "one\n二行目\n")
        self.start_with_display(lyrics)
        s.stamp(0, "[00:00:00]one")
        self.wait_line("one")
        s.forward(2)
        s.stamp(1, "[00:02:00]二行目")
        self.wait_line("二行目")
        hands.press("ctrl+z")
        self.wait_line("one")
        hands.press("ctrl+s")
        s.wait_bytes(lyrics, "[00:00:00]one\n二行目\n\0".encode())
        s.close_player()
        s.start(songs=[s.song])
        s.wait(self.window, "the display again")
        self.wait_line("one")

    def test_a_colour_of_the_preferences_is_that_of_both_windows(self):
        s = self.stage
        self.start_with_display(s.file("song.lrc", "one\n"))
        hands.press("ctrl+p")
        window = s.wait_window(PREFERENCES)
        hands.click(eyes.place(eyes.find(window, "page tab", "Appearance")))
        hands.click(eyes.place(s.wait(lambda: eyes.labelled(window, "Background:"), "the colour of the background")))
        dialog = s.wait_window("Background:")
        hands.click(eyes.place(eyes.labelled(dialog, "HTML:")))
        hands.press("ctrl+a")
        hands.write("#102030")
        hands.press("Return")
        s.wait(lambda: dialog not in s.windows(), "the dialog closed")
        # The preferences stand over the corner that is looked at.
        hands.press("Escape")
        for node in (s.lyrics(), self.view()):
            left, top, _, height = eyes.place(node)
            s.wait(lambda at=(left + 2, top + height - 4): hands.color_at(*at) == (0x10, 0x20, 0x30), "the new background")
