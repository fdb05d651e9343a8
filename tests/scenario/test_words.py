"""Word by word: every word of a line by the space bar, its end by holding the key."""
import re

import hands
from case import Case

LINE = "one two three four five six"
TAG = re.compile(r"\[(\d\d):(\d\d):(\d\d)\]")


def times_of(line):
    return [int(m) * 6000 + int(s) * 100 + int(c) for m, s, c in TAG.findall(line)]


class Words(Case):
    def test_sixty_keys_time_ten_lines_of_six_words_with_their_ends(self):
        s = self.start((LINE + "\n") * 10)
        hands.press("ctrl+b")
        s.wait_status("Word by word: the space bar times each word")
        hands.press("ctrl+space")
        s.wait(lambda: s.position() >= 1, "the song playing")
        for row in range(10):
            hands.tap("space", 5)
            hands.tap("space", 1, held=0.3)
            s.wait_status(f"Set the end of line {row + 1}")
        hands.press("ctrl+space", "ctrl+s")
        s.wait(lambda: s.lyrics_file.read_bytes().endswith(b"]\n\0"), "the saved file")
        lines = s.lyrics_file.read_text().rstrip("\0").splitlines()
        last = 0
        for line in lines:
            times = times_of(line)
            self.assertEqual(TAG.sub("", line), LINE)
            self.assertEqual(len(times), 7, line)
            self.assertEqual(times, sorted(times), line)
            self.assertGreaterEqual(times[0], last)
            self.assertGreater(times[6], times[5], "the end is that of the release")
            last = times[0]
        self.assertEqual(s.rows()[0], TAG.match(lines[0]).group() + LINE, "tags within the line are not shown")

    def test_the_choice_is_kept_and_a_chorus_is_timed_once(self):
        s = self.start("[00:01:00]la [00:02:00]la\n[00:10:00]la la\n")
        hands.press("ctrl+b", "ctrl+shift+r")
        s.wait_status("Lines that got the word times: 1")
        s.save(b"[00:01:00]la [00:02:00]la\n[00:10:00]la [00:11:00]la\n\0")
        s.close_player()
        s.start(s.lyrics_file)
        s.wait_rows("[00:01:00]la la", "[00:10:00]la la")
        hands.press("Right", "Right", "Right", "space")
        s.wait_status("Timed word 2 / 2")
