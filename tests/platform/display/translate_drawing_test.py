#!/usr/bin/env python3
"""What scripts/translate_drawing.py makes of drawings, and what it stops at."""
import math
import re
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
    def test_paths_are_counted_from_the_corner_and_arcs_go_the_side_and_the_way_that_they_say(self):
        over = "C 0 -55 45 -100 100 -100 C 155 -100 200 -55 200 0"
        quarter = "M 0 0 C 0 55 45 100 100 100"
        for path, expected in {
            "m1 2 3,4h-.5V9zl1 1": "M 100 200 L 400 600 L 350 600 L 350 900 Z L 200 300",
            "M1 1c1 0 2-1 3 0M0 0 5 5": "M 100 100 C 200 100 300 0 400 100 M 0 0 L 500 500",
            "M0 0a1 1 0 0 1 2 0": f"M 0 0 {over}",
            "M0 0A.5.5 0 0 1 2 0": f"M 0 0 {over}",  # too small for its ends
            "M0 0a1 1 0 0 0 1 1": quarter,
            "M0 0a1 1 0 1 0 1-1": f"{quarter} C 155 100 200 55 200 0 C 200 -55 155 -100 100 -100",
        }.items():
            self.assertEqual(translate(f'<path d="{path}"/>').stdout, f"drawing 2400 2400\n#ff000000 {expected}\n")

    def test_lines_become_outlines_with_round_ends_and_corners(self):
        top, bottom = "C 655 100 700 145 700 200", "C 145 300 100 255 100 200 C 100 145 145 100 200 100"
        for path, expected in {
            "M2 2h4": f"M 200 100 L 600 100 {top} C 700 255 655 300 600 300 L 200 300 {bottom} Z",
            "M2 2h4v4": f"M 200 100 L 600 100 {top} L 700 600 C 700 655 655 700 600 700 C 545 700 500 655 500 600 "
                        f"L 500 200 L 600 200 L 600 300 L 200 300 {bottom} Z",
        }.items():
            done = translate(f'<path d="{path}" fill="none" stroke="currentColor" stroke-width="2"/>')
            self.assertEqual(done.stdout.splitlines()[1:], [f"ink {expected}"], done.stderr)

    def test_a_line_follows_its_curve_on_both_sides(self):
        ring = translate('<circle cx="10" cy="10" r="9" fill="none" stroke="#fff" stroke-width="2"/>').stdout
        points = [tuple(map(int, pair)) for pair in re.findall(r"(?:C -?\d+ -?\d+ -?\d+ -?\d+|M) (-?\d+) (-?\d+)", ring)]
        distances = [round(math.dist(point, (1000, 1000)), -1) for point in points]
        self.assertEqual((distances.count(1000), distances.count(800)), (9, 9))

    def test_colours_and_widths_come_from_the_groups_around(self):
        self.assertEqual(
            translate('<linearGradient id="g" x2="0" y2="1"><stop stop-color="#fff"/><stop offset="1" stop-color="#102030"/>'
                      '</linearGradient><g stroke="currentColor" fill="#123"><rect width="3" height="2" stroke="none" '
                      'fill="url(#g)"/><path d="M1 1V2" opacity=".5" stroke="none"/></g>').stdout.splitlines()[1:],
            ["#ffffffff/#ff102030 M 0 0 L 300 0 L 300 200 L 0 200 L 0 0 Z", "#80112233 M 100 100 L 100 200"])

    def test_what_it_cannot_translate_ends_it_with_a_message(self):
        for shapes in ('<text/>', '<path d="M1 1S2 2 3 3"/>', '<path d="M1 1z5"/>', '<path d="M1"/>',
                       '<path d="M0 0" transform="scale(2)"/>', '<g opacity=".5"/>', '<path d="M0 0" fill="red"/>',
                       '<path d="M0 0" stroke="#fff" stroke-linecap="butt"/>', '<path d="M0 0a1 1 0 015 5"/>'):
            done = translate(shapes)
            self.assertEqual((done.returncode, done.stdout), (1, ""), shapes)
            self.assertIn("is not understood", done.stderr)


if __name__ == "__main__":
    unittest.main()
