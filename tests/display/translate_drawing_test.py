#!/usr/bin/env python3
"""What scripts/translate_drawing.py makes of drawings, and what it stops at."""
import subprocess
import sys
import tempfile
import unittest

TRANSLATOR = sys.argv.pop(1)


def translate(shapes):
    with tempfile.NamedTemporaryFile("w", suffix=".svg") as file:
        file.write('<svg xmlns="http://www.w3.org/2000/svg" width="24" height="24" viewBox="0 0 24 24" stroke-linecap="round" '
                   f'stroke-linejoin="round">{shapes}</svg>')
        file.flush()
        return subprocess.run([sys.executable, TRANSLATOR, file.name], capture_output=True, text=True, timeout=60)


class TranslateDrawing(unittest.TestCase):
    def assert_path(self, path, expected):
        self.assertEqual(translate(f'<path d="{path}"/>').stdout, f"drawing 2400 2400\n#ff000000 none 100 {expected}\n")

    def test_paths_are_counted_from_the_corner(self):
        self.assert_path("m1 2 3,4h-.5V9zl1 1", "M 100 200 L 400 600 L 350 600 L 350 900 Z L 200 300")
        self.assert_path("M1 1c1 0 2-1 3 0M0 0 5 5", "M 100 100 C 200 100 300 0 400 100 M 0 0 L 500 500")

    def test_arcs_go_the_side_and_the_way_that_they_say(self):
        over = "C 0 -55 45 -100 100 -100 C 155 -100 200 -55 200 0"
        self.assert_path("M0 0a1 1 0 0 1 2 0", f"M 0 0 {over}")
        self.assert_path("M0 0A.5.5 0 0 1 2 0", f"M 0 0 {over}")  # too small for its ends
        self.assert_path("M0 0a1 1 0 0 0 1 1", "M 0 0 C 0 55 45 100 100 100")
        self.assert_path("M0 0a1 1 0 1 0 1-1",
                         "M 0 0 C 0 55 45 100 100 100 C 155 100 200 55 200 0 C 200 -55 155 -100 100 -100")

    def test_colours_and_widths_come_from_the_groups_around(self):
        self.assertEqual(
            translate('<linearGradient id="g" x2="0" y2="1"><stop stop-color="#fff"/><stop offset="1" stop-color="#102030"/>'
                      '</linearGradient><g stroke="currentColor" stroke-width="2"><rect width="3" height="2" fill="url(#g)"/>'
                      '<path d="M1 1" fill="none" stroke="#123" opacity=".5"/></g>').stdout.splitlines()[1:],
            ["#ffffffff/#ff102030 ink 200 M 0 0 L 300 0 L 300 200 L 0 200 L 0 0 Z", "none #80112233 200 M 100 100"])

    def test_what_it_cannot_translate_ends_it_with_a_message(self):
        for shapes in ('<text/>', '<path d="M1 1S2 2 3 3"/>', '<path d="M1 1z5"/>', '<path d="M1"/>',
                       '<path d="M0 0" transform="scale(2)"/>', '<g opacity=".5"/>', '<path d="M0 0" fill="red"/>',
                       '<path d="M0 0" stroke="#fff" stroke-linecap="butt"/>', '<path d="M0 0a1 1 0 015 5"/>'):
            done = translate(shapes)
            self.assertEqual((done.returncode, done.stdout), (1, ""), shapes)
            self.assertIn("is not understood", done.stderr)


if __name__ == "__main__":
    unittest.main()
