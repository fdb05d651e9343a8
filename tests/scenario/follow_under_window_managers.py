"""Drags the player's and the editor's window under real window managers, and prints the distance between them.

follow_under_window_managers.py [NAME ...]   Run by on_stage.sh; the names are those of MANAGERS, all without any.
The status is 0 when every case under every window manager passed. Not part of the suite that run.sh discovers: some
window managers take long to start, and their packages are needed by nothing else.
"""
import os
import pathlib
import signal
import subprocess
import sys
import time

from Xlib import X, XK
from Xlib.display import Display
from Xlib.ext import xtest

import stage
from eyes import wait_until

STILL_LOOKS = 10
LOOK_S = 0.05
KEY_PAUSE = 0.06


class Manager:
    """How a window manager is set up and started, and how it moves the active window by the keyboard."""

    def __init__(self, command, files=None, outline=False, begin="Alt_L+F7", keys="{}", end="Return"):
        self.command = command
        self.files = files or {}
        self.outline = outline  # only a frame is dragged; the window moves once, when the button is released
        self.begin, self.keys, self.end = begin, keys, end


def openbox():
    default = pathlib.Path("/etc/xdg/openbox/rc.xml").read_text()
    settings = default.replace("</keyboard>", '<keybind key="A-F7"><action name="Move"/></keybind></keyboard>')
    return Manager(["openbox"], {"settings/openbox/rc.xml": settings})


def icewm(outline):
    return Manager(["icewm"], {"home/.icewm/preferences": f"OpaqueMove={int(not outline)}\n"}, outline)


def fluxbox(outline):
    settings = ("session.configVersion: 13\nsession.keyFile: ~/.fluxbox/keys\n"
                f"session.screen0.opaqueMove: {str(not outline).lower()}\n")
    keys = ("OnTitlebar Mouse1 :MacroCmd {Raise} {Focus}\nOnTitlebar Move1 :StartMoving\n" +
            "".join(f"Mod1 {way} :Move{way} 10\n" for way in ("Left", "Right", "Up", "Down")))
    return Manager(["fluxbox"], {"home/.fluxbox/init": settings, "home/.fluxbox/keys": keys}, outline,
                   begin="", keys="Alt_L+{}", end="")


MANAGERS = {
    "openbox": openbox,
    "metacity": lambda: Manager(["metacity"]),
    # Its outlines are left out: it stops the X server while it drags one, and with it the hand that drags.
    "xfwm4": lambda: Manager(["xfwm4", "--compositor=off"]),
    "icewm": lambda: icewm(outline=False),
    "icewm, outline": lambda: icewm(outline=True),
    "fluxbox": lambda: fluxbox(outline=False),
    "fluxbox, outline": lambda: fluxbox(outline=True),
}


class Desk:
    """The screen with a window manager of settings of its own, looked at and handled as a user would."""

    def __init__(self, manager):
        self.manager = manager
        self.stage = stage.Stage()
        self.display = Display()
        self.window = self.display.screen().root
        # Some stop the X server for everybody else while they drag an outline.
        xtest.grab_control(self.display, True)
        for name, text in manager.files.items():
            self.stage.file(name, text)
        with open(self.stage.root / "log", "wb") as log:
            self.process = subprocess.Popen(["dbus-run-session", "--", *manager.command], env=self.stage.own(),
                                            stdout=log, stderr=log, start_new_session=True)
        wait_until(self.is_managed, f"{manager.command[0]} on the display")
        wait_until(self.takes_a_window, f"{manager.command[0]} ready")

    def stop(self):
        os.killpg(self.process.pid, signal.SIGKILL)  # some take their time over a friendlier one
        self.process.wait()
        wait_until(lambda: not self.is_managed(), f"{self.manager.command[0]} gone")
        self.display.close()
        self.stage.clear_away()

    def is_managed(self):
        """A window manager has a window of its own; the property alone may be left from another."""
        check = self.property(self.window, "_NET_SUPPORTING_WM_CHECK")
        return bool(check) and self.property(self.resource(check[0]), "_NET_SUPPORTING_WM_CHECK") == check

    def takes_a_window(self):
        """A window that comes while a window manager still starts may be passed over for ever; the next one is not."""
        probe = self.window.create_window(0, 0, 100, 100, 0, X.CopyFromParent)
        probe.map()
        deadline = time.monotonic() + 2
        while time.monotonic() < deadline and probe.id not in self.property(self.window, "_NET_CLIENT_LIST"):
            time.sleep(LOOK_S)
        taken = probe.id in self.property(self.window, "_NET_CLIENT_LIST")
        probe.destroy()
        self.display.sync()
        return taken

    def property(self, window, name):
        try:
            found = window.get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        except Exception:  # a window that is gone
            return []
        return list(found.value) if found else []

    def resource(self, number):
        return self.display.create_resource_object("window", number)

    def named(self, belongs):
        for number in self.property(self.window, "_NET_CLIENT_LIST"):
            window = self.resource(number)
            if belongs(bytes(self.property(window, "_NET_WM_NAME")).decode()):
                return window
        return None

    def place(self, window):
        at = self.window.translate_coords(window, 0, 0)
        return at.x, at.y

    def grip(self, window):
        """The middle of the title bar."""
        left, top = self.place(window)
        title_bar = self.property(window, "_NET_FRAME_EXTENTS")[2]
        return left + window.get_geometry().width // 2, top - title_bar // 2

    def activate(self, window):
        subprocess.run(["xdotool", "windowactivate", str(window.id)], check=True)
        wait_until(lambda: self.property(self.window, "_NET_ACTIVE_WINDOW")[:1] == [window.id], "the window active")

    def point(self, x, y):
        xtest.fake_input(self.display, X.MotionNotify, x=int(x), y=int(y))
        self.display.sync()

    def button(self, kind):
        xtest.fake_input(self.display, kind, 1)
        self.display.sync()

    def drag(self, window, dx, dy, steps, pause):
        """By the title bar; `pause` is the pace of the hand."""
        self.activate(window)
        x, y = self.grip(window)
        self.point(x, y)
        self.button(X.ButtonPress)
        time.sleep(pause)
        for step in range(1, steps + 1):
            self.point(x + dx * step / steps, y + dy * step / steps)
            time.sleep(pause)
        time.sleep(pause)
        if self.manager.outline and self.grip(window) != (x, y):
            raise AssertionError("the window itself is dragged, not its outline")
        self.button(X.ButtonRelease)

    def push(self, window, *ways):
        """By the keyboard."""
        self.activate(window)
        manager = self.manager
        for chord in filter(None, [manager.begin, *(manager.keys.format(way) for way in ways), manager.end]):
            codes = [self.display.keysym_to_keycode(XK.string_to_keysym(name)) for name in chord.split("+")]
            for kind, order in ((X.KeyPress, codes), (X.KeyRelease, reversed(codes))):
                for code in order:
                    xtest.fake_input(self.display, kind, code)
            self.display.sync()
            time.sleep(KEY_PAUSE)

    def wait_still(self, *windows):
        """Nothing tells that a window manager has done with a window: places that stay the same for a while do."""
        seen, places = 0, None
        while seen < STILL_LOOKS:
            time.sleep(LOOK_S)
            before, places = places, [self.place(window) for window in windows]
            seen = seen + 1 if places == before else 0
        return places


SLOW, FAST = (40, 0.01), (5, 0.02)  # steps, seconds between them


class Rehearsal:
    """The player and the editor on a desk, and the cases they go through."""

    CASES = {
        "player_slow": lambda on: on.kept(lambda: on.drag(on.player, 50, 60, SLOW)),
        "player_fast": lambda on: on.kept(*(lambda way=way: on.drag(on.player, *way, FAST)
                                            for way in ((60, 40), (-80, -30), (40, 30)))),
        "player_keys": lambda on: on.kept(lambda: on.push(on.player, *["Right"] * 4, *["Down"] * 3)),
        "editor_slow": lambda on: on.remembered(lambda: on.drag(on.editor, -40, 50, SLOW)),
        "editor_fast": lambda on: on.remembered(lambda: on.drag(on.editor, 30, 40, FAST)),
        "editor_keys": lambda on: on.remembered(lambda: on.push(on.editor, *["Left"] * 2, *["Down"] * 3)),
        "edge_slow": lambda on: on.edge(SLOW),
        "edge_fast": lambda on: on.edge(FAST),
        "edge_then_keys": lambda on: on.beyond(lambda: on.push(on.editor, *["Left"] * 3)),
        "edge_then_drag": lambda on: on.beyond(lambda: on.drag(on.editor, -60, 0, SLOW)),
    }

    def __init__(self, desk, performance):
        self.desk = desk
        performance.launch()
        self.player = wait_until(lambda: desk.named(lambda name: name.startswith("Sonivo")), "the player managed")
        self.editor = wait_until(lambda: desk.named(lambda name: name.endswith(stage.APP)), "the editor managed")
        desk.wait_still(self.player, self.editor)

    def run(self):
        return {case: self.play(case) for case in self.CASES}

    def play(self, case):
        outcome = self.CASES[case](self)
        print(f"{case}: {outcome}", file=sys.stderr, flush=True)
        return outcome

    def difference(self):
        (left, top), (x, y) = self.desk.wait_still(self.player, self.editor)
        return x - left, y - top

    def drag(self, window, dx, dy, pace):
        """Returns how far the window has gone."""
        return self.moved(window, lambda: self.desk.drag(window, dx, dy, *pace))

    def push(self, window, *ways):
        return self.moved(window, lambda: self.desk.push(window, *ways))

    def moved(self, window, move):
        """Again if a window manager that is slow to take the pointer has missed the whole move."""
        before, = self.desk.wait_still(window)
        for _ in range(3):
            move()
            after, = self.desk.wait_still(window)
            if after != before:
                break
        return after[0] - before[0], after[1] - before[1]

    def verdict(self, before, after, *moves):
        """Moves that did not happen show nothing."""
        if (0, 0) in moves:
            return "not moved", False
        shown = "{},{}".format(*before)
        return (shown, True) if before == after else (shown + " > {},{}".format(*after), False)

    def kept(self, *moves):
        before = self.difference()
        done = [move() for move in moves]
        return self.verdict(before, self.difference(), *done)

    def remembered(self, move):
        """The editor's own move outlasts a slow and a fast move of the player, there and back."""
        done = move()
        before = self.difference()
        done = [done, self.drag(self.player, 30, 20, SLOW)]
        after = self.difference()
        done.append(self.drag(self.player, -40, -25, FAST))
        verdict = self.verdict(before, after, *done)
        return verdict if not verdict[1] else self.verdict(before, self.difference())

    def edge(self, pace):
        return self.kept(lambda: self.drag(self.player, 300, 250, pace), lambda: self.drag(self.player, -300, -260, pace))

    def beyond(self, move):
        """A move of the editor where the edge of the screen has stopped it, or lets it hang over."""
        way = self.drag(self.player, 300, 0, FAST)
        done = move()
        before = self.difference()
        back = self.drag(self.player, -300, 20, FAST)
        return self.verdict(before, self.difference(), way, done, back)


def rehearse(name):
    print(f"== {name}", file=sys.stderr)
    desk = Desk(MANAGERS[name]())
    performance = stage.Stage()
    try:
        return Rehearsal(desk, performance).run()
    finally:
        performance.clear_away()
        desk.stop()


def print_row(title, cells):
    print(" | ".join([f"{title:15}", *(f"{cell:25}" for cell in cells)]))


def main():
    names = sys.argv[1:] or list(MANAGERS)
    found = {name: rehearse(name) for name in names}
    print_row("", names)
    for case in Rehearsal.CASES:
        outcomes = [found[name][case] for name in names]
        print_row(case.replace("_", " "), [("ok " if ok else "FAIL ") + shown for shown, ok in outcomes])
    return 0 if all(ok for outcomes in found.values() for _, ok in outcomes.values()) else 1


if __name__ == "__main__":
    sys.exit(main())
