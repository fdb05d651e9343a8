"""The lane: the sound around a line, in which mouse and keys move its tags."""
import pathlib
import re

import eyes
import hands
from case import Case

TIMES = pathlib.Path(__file__).parents[2] / "demo/demo.times"
SUNG = [(int(ms), text) for ms, text in (line.split("\t") for line in TIMES.read_text().splitlines())]
LATE_MS = 90


def tag(time_ms):
    return f"[{time_ms // 60000:02}:{time_ms // 1000 % 60:02}:{time_ms // 10 % 100:02}]"


def time_of(line):
    minutes, seconds, hundredths = re.match(r"\[(\d\d):(\d\d):(\d\d)\]", line).groups()
    return int(minutes) * 60000 + int(seconds) * 1000 + int(hundredths) * 10


class Lane(Case):
    def setUp(self):
        super().setUp()
        self.late = [time_ms // 10 * 10 + LATE_MS for time_ms, _ in SUNG]
        self.start("".join(tag(ms) + text + "\n" for ms, (_, text) in zip(self.late, SUNG)))
        hands.press("Down", "ctrl+g")
        self.stage.wait(self.lane, "the lane")
        self.stage.wait(lambda: eyes.description(self.lane()).startswith("Tag of the line"), "the sound")

    def lane(self):
        found = [n for n in eyes.below(self.stage.window()) if eyes.name(n) == "Sound around the line"]
        return next(n for n in found if "showing" in eyes.states(n) and eyes.role(n) != "menu item")

    def point(self, row, time_ms):
        """Where that time is, while that row is selected."""
        left, top, width, height = eyes.place(self.lane())
        first, last = self.late[row] - 1000, self.late[row + 1] + 1000
        return left + round((time_ms - first) * width / (last - first)), top + height // 2

    def tag_of(self, row):
        return time_of(self.stage.rows()[row])

    def drag(self, start, end, held=None):
        words = ["mousemove", *start, "mousedown", 1, "mousemove", (start[0] + end[0]) // 2, end[1], "mousemove", *end, "mouseup", 1]
        hands._do(*(["keydown", held] if held else []), *words, *(["keyup", held] if held else []))

    def wait_tag(self, row, is_right, what):
        self.stage.wait(lambda: is_right(self.tag_of(row)), what)

    def undo(self):
        hands.press("ctrl+z")
        self.wait_tag(1, lambda ms: ms == self.late[1], "the tag where it was")

    def test_a_tag_is_moved_to_the_onset_by_key_and_by_mouse(self):
        s, sung = self.stage, SUNG[1][0]
        hands._do("mousemove", *self.point(1, self.late[1]), "click", 1)
        s.wait_focus("Sound around the line")

        def snapped():
            hands.press("s")  # until the onsets are known
            return self.tag_of(1) != self.late[1]

        s.wait(snapped, "the tag at the onset")
        self.assertLess(abs(self.tag_of(1) - self.late[1]), 100)
        self.undo()
        self.drag(self.point(1, self.late[1]), self.point(1, sung + 15))
        self.wait_tag(1, lambda ms: abs(ms - sung) <= 20, "the tag snapped to the start of the line")
        self.undo()
        self.drag(self.point(1, self.late[1]), self.point(1, self.late[1] + 700), "ctrl")
        self.wait_tag(2, lambda ms: ms != self.late[2], "the later tags moved")
        hands.press("ctrl+s")
        s.wait(lambda: tag(self.late[1]) not in s.lyrics_file.read_text(), "the saved file")
        saved = s.lyrics_file.read_text().rstrip("\0").splitlines()
        moved = [time_of(line) - ms for line, ms in zip(saved, self.late)]
        self.assertEqual((moved[0], len(set(moved[1:]))), (0, 1), moved)
        self.assertLess(abs(moved[1] - 700), 120, "at most the distance to the next onset")
        self.undo()
        hands.press("Up", "shift+Down")
        self.wait_tag(1, lambda ms: ms == self.late[1] - 90, "the tag nudged by keys")
        hands.press("Return")
        s.wait(lambda: s.position() >= self.late[1] // 1000, "the song playing from the tag")
        hands.press("Escape")
        s.wait_focus("Lyrics")

    def test_a_missing_tag_is_set_by_double_click_and_by_key_and_gives_its_room_back(self):
        s, text = self.stage, SUNG[1][1]
        hands.press("Delete")
        s.wait(lambda: eyes.description(self.lane()).startswith("The line has no tag"), "that there is none")
        left, top, width, height = eyes.place(self.lane())
        hands._do("mousemove", left + width // 2, top + height // 2, "click", "--repeat", 2, "--delay", 40, 1)
        s.wait(lambda: s.rows()[1].startswith("[00:"), "the tag where it was clicked")
        self.assertTrue(self.late[0] < self.tag_of(1) < self.late[2], s.rows()[1])
        hands.press("ctrl+z")
        s.wait(lambda: s.rows()[1] == text, "no tag, by one step")
        hands.press("t")
        s.wait(lambda: s.rows()[1].startswith("[00:"), "the tag at the play position")
        hands.press("Escape")
        s.wait_focus("Lyrics")
        height = eyes.place(s.lyrics())[3]
        hands.press("ctrl+g")
        s.wait(lambda: eyes.place(s.lyrics())[3] == height + 120, "the whole room")

    def test_proposed_times_are_accepted_in_one_step(self):
        s = self.stage
        before = s.rows()
        hands.press("ctrl+shift+p")
        window = s.wait(s.other, "the window with the proposals")
        listed = s.wait(lambda: eyes.children(eyes.find(window, "list")), "the proposals")
        self.assertGreater(len(listed), len(SUNG) // 2)
        self.assertEqual(s.rows(), before, "nothing changes unasked")
        hands.click(eyes.place(next(n for n in eyes.below(window) if eyes.name(n) == "Accept all")))
        s.wait(lambda: not s.other(), "the window closed")
        hands.press("ctrl+s")
        s.wait(lambda: s.lyrics_file.read_text().rstrip("\0").splitlines() != before, "the accepted times saved")
        saved = [time_of(line) for line in s.lyrics_file.read_text().rstrip("\0").splitlines()]
        errors = sorted(abs(ms - sung) for ms, (sung, _) in zip(saved, SUNG))
        self.assertLessEqual(errors[len(errors) // 2], 15, errors)
        hands.press("ctrl+z", "ctrl+s")
        s.wait(lambda: s.lyrics_file.read_text().rstrip("\0").splitlines() == before, "all of it undone by one step")
