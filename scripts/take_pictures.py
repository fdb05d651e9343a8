"""Takes the pictures of the help page and of the README: run by take_pictures.sh, with the checkout's folder."""
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(sys.argv[1])
sys.path.insert(0, str(ROOT / "tests/scenario"))

import eyes  # noqa: E402
import hands  # noqa: E402
from stage import Stage  # noqa: E402

HELP = ROOT / "src/editor/help/pictures"
DOCS = ROOT / "docs/pictures"
LYRICS = """[00:05:73]Who has seen the wind?
[00:08:60]Neither I nor you:
[00:11:11]But when the leaves hang trembling,
The wind is passing through.
Who has seen the wind?
Neither you nor I:
But when the trees bow down their heads,
The wind is passing by.
色は匂へど 散りぬるを
我が世誰ぞ 常ならむ
有為の奥山 今日越えて
浅き夢見じ 酔ひもせず
"""


class Words:
    """The labels of one language, from its file."""

    def __init__(self, file_name):
        self.texts = {}
        for line in (ROOT / "src/language/texts" / file_name).read_text().splitlines():
            key, equals, text = line.partition("=")
            if equals:
                self.texts[key.strip()] = text.strip()

    def __getitem__(self, key):
        return self.texts[key]


def around(*boxes):
    left, top = (min(box[i] for box in boxes) for i in (0, 1))
    right, bottom = (max(box[i] + box[i + 2] for box in boxes) for i in (0, 1))
    return left, top, right - left, bottom - top


def take(path, box):
    """Saves a part of the screen as a small PNG with few colours and a thin frame."""
    path.parent.mkdir(parents=True, exist_ok=True)
    left, top, width, height = box
    screen = subprocess.run(["import", "-window", "root", "png:-"], check=True, stdout=subprocess.PIPE).stdout
    subprocess.run(["convert", "png:-", "-crop", f"{width}x{height}+{left}+{top}", "+repage", "+dither", "-colors", "96",
                    "-bordercolor", "#888", "-border", "1", "-strip", "-define", "png:compression-level=9",
                    f"PNG8:{path}"], input=screen, check=True)


def make_equally_high(window, other):
    """Gives the first window the height of the second."""
    _, _, width, _ = eyes.place(window)
    height = eyes.place(other)[3]
    subprocess.run(["xdotool", "search", "--name", f"^{eyes.name(window)}$", "windowsize", str(width), str(height)], check=True)
    eyes.wait_until(lambda: eyes.place(window)[3] == height, "windows of one height")


def move_left(window):
    """Far enough for the widest submenu to open to the right."""
    left, top, _, _ = eyes.place(window)
    to = left - 60
    subprocess.run(["xdotool", "search", "--name", f"^{eyes.name(window)}$", "windowmove", str(to), str(top)], check=True)
    eyes.wait_until(lambda: eyes.place(window)[0] == to, "the window further left")


def take_windows(language, words):
    s = Stage()
    try:
        s.set_language(f"{language}.llt")
        short = words["Locale"]
        # Entries for the list of recent files.
        for name in ("morning.lrc", "evening.lrc"):
            s.start(s.file(name, "one\n"))
            s.stop()
        s.start(s.file("song.lrc", LYRICS))
        hands.press("Down", "Down", "Return")
        s.wait_position(11)
        s.forward(13)
        hands.press("Down", "space")
        s.wait_selected(4)
        hands.press("Up")
        s.wait_selected(3)
        make_equally_high(s.window(), s.player())
        take(HELP / f"window_{short}.png", eyes.place(s.window()))

        move_left(s.window())
        hands.press("F10")
        menu = [words["Menu_File"], words["Menu_Open"]]
        s.wait(lambda: "showing" in eyes.states(s.popup(menu[:1])), "the first menu")
        s.go_down_to(menu)
        hands.press("Right")
        s.wait(lambda: "showing" in eyes.states(s.popup(menu)), "the recent files")
        take(HELP / f"recent_{short}.png", around(eyes.place(s.menu_item(*menu[:1])), eyes.place(s.popup(menu[:1])),
                                                  eyes.place(s.popup(menu))))
        hands.press("Escape", "Escape", "Escape")
        s.wait_focus("Lyrics")

        hands.press("ctrl+2")
        panel = s.wait_panel(words["Save_Panel_Title"])
        hands.click(eyes.place(eyes.find(eyes.find(panel, "menu bar"), "menu item", "Encoding")))
        encodings = eyes.find(eyes.find(panel, "menu bar"), "popup menu")
        s.wait(lambda: "showing" in eyes.states(encodings), "the encodings")
        titles = [eyes.place(menu) for menu in eyes.children(eyes.find(panel, "menu bar"))]
        take(HELP / f"save_{short}.png", around(eyes.place(encodings), *titles))
    finally:
        s.clear_away()


def take_timing():
    """The picture of the README: the player with the waveform, and the song half tagged."""
    s = Stage()
    try:
        times = [line.split("\t") for line in (ROOT / "demo/demo.times").read_text().splitlines()]
        tagged = [f"[00:{int(ms) // 1000:02}:{int(ms) // 10 % 100:02}]{text}" for ms, text in times[:7]]
        s.start(s.file("song.lrc", "\n".join(tagged + [text for _, text in times[7:]]) + "\n"))
        s.wait(lambda: any((s.home / ".cache/KOREVA/Sonivo").glob("*")), "the waveform")
        hands.press(*["Down"] * 6, "Return")
        s.wait_position(22)
        s.forward(24)
        hands.press("Down", "space", "Up")
        s.wait_selected(7)
        make_equally_high(s.window(), s.player())
        take(DOCS / "timing_en.png", around(eyes.place(s.window()), eyes.place(s.player())))
    finally:
        s.clear_away()


take_timing()
for name in ("English", "Japanese", "German", "French"):
    take_windows(name, Words(f"{name}.llt"))
