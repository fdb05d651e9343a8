#!/usr/bin/env python3
"""Prints a drawing (SVG) in the form that platform/display/drawing.h draws: translate_drawing.py FILE

Knows what this program's drawings are made of, and stops at everything else.
"""
import math
import re
import sys
import xml.etree.ElementTree as xml

INHERITED = {"fill": "#000", "stroke": "none", "stroke-width": "1", "stroke-linecap": "butt", "stroke-linejoin": "miter"}
SHAPES = {"circle": ("cx", "cy", "r"), "ellipse": ("cx", "cy", "rx", "ry"), "rect": ("x", "y", "width", "height", "rx"),
          "path": ("d",)}
ARGUMENTS = {"M": 2, "L": 2, "H": 1, "V": 1, "C": 6, "A": 7, "Z": 0}
SAME = 1e-6  # nearer points are one
TOKEN = re.compile(r"[A-Za-z]|[-+]?(?:\d+\.?\d*|\.\d+)")


def need(condition, what):
    if not condition:
        sys.exit(f"{sys.argv[1]}: {what} is not understood")


def arc(start, radii, is_large, is_clockwise, end):
    """An elliptical arc between two points as Bezier curves of at most a quarter each."""
    # In the coordinates in which the ellipse is a circle.
    (x0, y0), (x1, y1) = ((x / radii[0], y / radii[1]) for x, y in (start, end))
    half = math.hypot(x1 - x0, y1 - y0) / 2
    radius = max(1, half)  # one that is too small grows
    away = math.sqrt(radius**2 - half**2) / half / 2 * (1 if is_large == is_clockwise else -1)
    x, y = (x0 + x1) / 2 + (y1 - y0) * away, (y0 + y1) / 2 - (x1 - x0) * away
    first = math.atan2(y0 - y, x0 - x)
    turn = (math.atan2(y1 - y, x1 - x) - first) % (2 * math.pi) - (0 if is_clockwise else 2 * math.pi)
    count = math.ceil(abs(turn) / (math.pi / 2) - 1e-9)
    reach = 4 / 3 * math.tan(turn / count / 4)
    for step in range(count):
        a, b = first + turn * step / count, first + turn * (step + 1) / count
        points = ((math.cos(a) - reach * math.sin(a), math.sin(a) + reach * math.cos(a)),
                  (math.cos(b) + reach * math.sin(b), math.sin(b) - reach * math.cos(b)), (math.cos(b), math.sin(b)))
        yield "C", [((x + radius * px) * radii[0], (y + radius * py) * radii[1]) for px, py in points]


def commands(text):
    """Yields each command of a path with its numbers; further numbers repeat the command."""
    tokens = TOKEN.findall(text)
    need("".join(tokens) == re.sub(r"[\s,]", "", text), f"the path {text}")
    letter = ""
    while tokens:
        letter = tokens.pop(0) if tokens[0].isalpha() else {"M": "L", "m": "l", "Z": "", "z": ""}.get(letter, letter)
        count = ARGUMENTS.get(letter.upper(), -1)
        need(0 <= count <= len(tokens), f"'{letter}' in the path {text}")
        yield letter, [float(tokens.pop(0)) for _ in range(count)]


def outline(text):
    """The segments of a path: each a letter of M, L, C, Z and its points, in absolute coordinates."""
    here = begin = (0.0, 0.0)
    for letter, numbers in commands(text):
        kind, origin = letter.upper(), here if letter.islower() else (0.0, 0.0)
        if kind == "H":
            points = [(origin[0] + numbers[0], here[1])]
        elif kind == "V":
            points = [(here[0], origin[1] + numbers[0])]
        else:
            tail = numbers[5:] if kind == "A" else numbers
            points = [(origin[0] + x, origin[1] + y) for x, y in zip(tail[::2], tail[1::2])]
        if kind == "A":
            need({*numbers[3:5]} <= {0, 1} and numbers[2] == 0, f"an arc of {text}")
            if points[0] != here:
                yield from arc(here, numbers[:2], numbers[3] == 1, numbers[4] == 1, points[0])
        else:
            yield "L" if kind in "HV" else kind, points
        here = points[-1] if points else begin
        begin = here if kind == "M" else begin


def path_of(shape, kind):
    """Circles and rectangles as paths."""
    x, y, *sizes = (float(shape.get(name, 0)) for name in SHAPES[kind]) if kind != "path" else (0, 0)
    if kind == "path":
        return shape.get("d")
    if kind == "rect":
        width, height, r = sizes
        corners = [f"a{r} {r} 0 0 1 {a * r} {b * r}" if r else "" for a, b in ((1, 1), (-1, 1), (-1, -1), (1, -1))]
        return (f"M{x + r} {y}h{width - 2 * r}{corners[0]}v{height - 2 * r}{corners[1]}h{2 * r - width}{corners[2]}"
                f"v{2 * r - height}{corners[3]}z")
    rx, ry = sizes if kind == "ellipse" else sizes * 2
    return f"M{x + rx} {y}A{rx} {ry} 0 0 1 {x - rx} {y}A{rx} {ry} 0 0 1 {x + rx} {y}z"


def pieces_of(text):
    """The subpaths of a path: the segments with all their points, and whether it is closed."""
    lines, pieces, here, begin = [], [], None, None
    for letter, points in [*outline(text), ("M", [None])]:
        if letter == "M":
            lines += [(pieces, False)] if pieces else []
            pieces, begin, here = [], points[0], points[0]
            continue
        points = points or [begin]
        if len(points) > 1 or math.dist(here, points[0]) > SAME:
            pieces.append([here, *points])
        here = points[-1]
        if letter == "Z":
            lines.append((pieces, True))
            pieces = []
    return lines


def halves(piece):
    """Splits a curve in two, so that each half can be offset; a line is unchanged."""
    if len(piece) == 2:
        return [piece]
    rows = [piece]
    while len(rows[-1]) > 1:
        rows.append([((ax + bx) / 2, (ay + by) / 2) for (ax, ay), (bx, by) in zip(rows[-1], rows[-1][1:])])
    return [[row[0] for row in rows], [row[-1] for row in reversed(rows)]]


def direction(a, b):
    length = math.dist(a, b)
    need(length > 0, "a curve that begins or ends with its own point")
    return (b[0] - a[0]) / length, (b[1] - a[1]) / length


def beside(point, heading, distance):
    return point[0] + distance * heading[1], point[1] - distance * heading[0]


def follow(piece, distance):
    """The line or curve, offset to the left by that distance."""
    first, last = direction(*piece[:2]), direction(*piece[-2:])
    begin, end = beside(piece[0], first, distance), beside(piece[-1], last, distance)
    if len(piece) == 2:
        return [begin, end]
    stretch = math.dist(begin, end) / math.dist(piece[0], piece[-1])
    reach, back = stretch * math.dist(*piece[:2]), stretch * math.dist(*piece[-2:])
    return [begin, (begin[0] + reach * first[0], begin[1] + reach * first[1]),
            (end[0] - back * last[0], end[1] - back * last[1]), end]


def side(pieces, distance):
    """The left offset of a closed subpath, with round outer corners."""
    for piece, after in zip(pieces, [*pieces[1:], pieces[0]]):
        there = follow(piece, distance)
        yield "L" if len(there) == 2 else "C", there[1:]
        (ax, ay), (bx, by) = direction(*piece[-2:]), direction(*after[:2])
        begin = follow(after, distance)[0]
        if math.dist(there[-1], begin) < SAME:
            continue
        if ax * by - ay * bx > -SAME:  # to the right, or right round
            yield from arc(there[-1], (distance, distance), False, True, begin)
        else:
            yield "L", [piece[-1]]
            yield "L", [begin]


def stroke_of(text, width):
    """The outline of a stroke of that width with round caps and joins. An open subpath is traced forth and back."""
    for line, is_closed in pieces_of(text):
        there = [half for piece in line for half in halves(piece)]
        back = [piece[::-1] for piece in there[::-1]]
        for way in [there, back] if is_closed else [there + back]:
            yield "M", [follow(way[0], width / 2)[0]]
            yield from side(way, width / 2)
            yield "Z", []


def hundredths(number):
    return str(round(100 * float(number)))


class Drawing:
    def __init__(self, root):
        self.gradients = {}
        self.lines = [" ".join(["drawing", *map(hundredths, (root.get("width"), root.get("height")))])]
        need(root.get("viewBox") == f"0 0 {root.get('width')} {root.get('height')}", "the view box")
        self.take(root, INHERITED)

    def take(self, parent, inherited):
        common = {name: parent.get(name, value) for name, value in inherited.items()}
        for child in parent:
            kind = child.tag.partition("}")[2]
            own = set(child.attrib) - set(INHERITED)
            if kind == "g" and not own:
                self.take(child, common)
            elif kind == "linearGradient":
                self.keep(child)
            else:
                need(kind in SHAPES and own <= {*SHAPES[kind], "opacity"}, f"<{kind}> with {sorted(own)}")
                self.add(child, kind, common)

    def keep(self, gradient):
        stops = [stop.attrib for stop in gradient]
        shape = {"id": gradient.get("id"), "x2": "0", "y2": "1"}
        need(gradient.attrib == shape and len(stops) == 2 and "offset" not in stops[0] and stops[1].get("offset") == "1",
             "a gradient that does not go from top to bottom")
        self.gradients[f"url(#{gradient.get('id')})"] = [stop["stop-color"] for stop in stops]

    def add(self, shape, kind, common):
        style = {name: shape.get(name, value) for name, value in common.items()}
        opacity = float(shape.get("opacity", 1))
        fill, stroke = (self.paint(style[name], opacity) for name in ("fill", "stroke"))
        need(stroke == "none" or style["stroke-linecap"] == style["stroke-linejoin"] == "round", "a line that is not round")
        need(opacity == 1 or "none" in (fill, stroke), "opacity of what is filled and has a line")
        text = path_of(shape, kind)
        if fill != "none":
            self.draw(fill, outline(text))
        if stroke != "none":
            self.draw(stroke, stroke_of(text, float(style["stroke-width"])))

    def draw(self, paint, parts):
        words = [paint]
        for letter, points in parts:
            words += [letter] + [hundredths(number) for point in points for number in point]
        self.lines.append(" ".join(words))

    def paint(self, color, opacity):
        if color == "none":
            return color
        if color == "currentColor":
            need(opacity == 1, "opacity of currentColor")
            return "ink"
        return "/".join(self.hex(each, opacity) for each in self.gradients.get(color, [color]))

    @staticmethod
    def hex(color, opacity):
        need(re.fullmatch("#[0-9a-f]{3}|#[0-9a-f]{6}", color), f"the colour {color}")
        full = color[1:] if len(color) == 7 else "".join(digit * 2 for digit in color[1:])
        return f"#{round(opacity * 255):02x}{full}"


if __name__ == "__main__":
    print("\n".join(Drawing(xml.parse(sys.argv[1]).getroot()).lines))
