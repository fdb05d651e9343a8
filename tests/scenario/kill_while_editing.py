#!/usr/bin/python3
"""Kills the program while real keys stamp, type, undo and save, and looks for what was on the screen in the next start.

kill_while_editing.py ROUNDS KILLS...    KILLS: kill (-9), display (its display server is killed), sound (a fault in the
thread that plays). What a look at the screen has shown must be there again: in the file, or behind "Recover", at most
the key that was pressed after the look ahead or behind. The file on the disk is old or new whole.
"""
import ctypes
import os
import pathlib
import random
import signal
import subprocess
import sys
import threading
import time

import eyes
import hands
from eyes import wait_until
from stage import Stage

LINES = ["one", "two", "three", "four", "five"]
TAG_KEYS = ["space"] * 6 + ["Delete", "plus", "Up", "ctrl+z", "ctrl+z", "ctrl+shift+z", "ctrl+s", "ctrl+e"]
TEXT_KEYS = ["x", "y", "Return", "BackSpace", "Down", "ctrl+z", "ctrl+shift+z", "ctrl+s", "ctrl+t"]
SYS_TGKILL = 234  # x86-64


def bytes_of(lines):
    return "".join(line + "\n" for line in lines).encode() + b"\0"


class Display:
    """A display server that can be killed."""

    def __init__(self):
        ours, theirs = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(theirs), "-screen", "0", "1280x800x24", "-nolisten", "tcp", "-noreset"],
            pass_fds=[theirs], stderr=subprocess.DEVNULL)
        os.close(theirs)
        with os.fdopen(ours) as number:
            self.name = ":" + number.readline().strip()

    def kill(self):
        self.server.kill()
        self.server.wait()


class Round:
    """One program, from its start to its violent end."""

    def __init__(self, stage, path, how, chance):
        self.stage, self.path, self.how, self.chance = stage, path, how, chance
        self.seen = None  # the last lines that were on the screen
        self.keys = []    # pressed after that look
        self.display = Display() if how == "display" else None
        if self.display:
            os.environ["DISPLAY"] = self.display.name

    def start(self):
        self.stage.start(self.path)

    def is_text(self):
        return eyes.role(self.stage.lyrics()) == "text"

    def lines(self):
        return self.stage.text().split("\n")[:-1] if self.is_text() else self.stage.rows()

    def kill(self):
        pid = self.stage.program.pid
        if self.how == "kill":
            os.kill(pid, signal.SIGKILL)
        elif self.how == "display":
            self.display.kill()
        else:
            tasks = pathlib.Path(f"/proc/{pid}/task").iterdir()
            thread = next(int(t.name) for t in tasks if "mpv" in (t / "comm").read_text() or "ao" in (t / "comm").read_text())
            ctypes.CDLL(None).syscall(SYS_TGKILL, pid, thread, signal.SIGSEGV)

    def work(self):
        """Presses keys, and looks after each, until the program is gone."""
        killer = threading.Timer(self.chance.uniform(0.2, 3), self.kill)
        self.seen = self.lines()
        killer.start()
        while self.stage.program.poll() is None:
            key = self.chance.choice(TEXT_KEYS if self.is_text_now() else TAG_KEYS)
            self.keys.append(key)
            try:
                hands.press(key)
                time.sleep(self.chance.choice([0, 0, 0.05, 0.3]))
                self.seen = self.lines()
                self.keys = [key]  # the look may have come before what the key did
            except Exception:  # it was killed meanwhile
                break
        killer.join()
        self.stage.program.wait(timeout=eyes.PATIENCE)

    def is_text_now(self):
        try:
            return self.is_text()
        except Exception:
            return False

    def check_file(self):
        data = self.path.read_bytes()
        text = data.rstrip(b"\0").decode()
        lines = text.split("\n")[:-1]
        if data != bytes_of(lines) and data != ORIGINAL:
            raise AssertionError(f"torn: {data}")
        return lines


ORIGINAL = "".join(line + "\n" for line in LINES).encode()


def notice(stage):
    return eyes.find(stage.window(), "push button", "Recover")


def recovered(current, last):
    """Starts the program again and recovers what it offers. True if there was something."""
    current.start()
    journals = list((current.stage.root / "state/KOREVA/VesmoE/Journal").glob("*.journal"))
    if not journals:
        return False
    button = wait_until(lambda: notice(current.stage), f"the offer of {journals}, after {last.keys}")
    hands.click(eyes.place(button))
    wait_until(lambda: not notice(current.stage), "the offer gone")
    hands.click(eyes.place(current.stage.lyrics()))
    return True


def check(current, last):
    on_disk = last.check_file()
    if not recovered(current, last):
        if last.seen != on_disk and not any(key in ("ctrl+s", "ctrl+z", "ctrl+shift+z") for key in last.keys):
            raise AssertionError(f"lost: {last.seen} was seen before {last.keys}, the file has {on_disk}")
        return
    if current.lines() == last.seen:
        return
    for key in ("ctrl+z", "ctrl+shift+z"):
        for times in (1, 2):
            hands.press(*[key] * times)
            time.sleep(0.3)
            if current.lines() == last.seen:
                return
            hands.press(*["ctrl+shift+z" if key == "ctrl+z" else "ctrl+z"] * times)
            time.sleep(0.3)
    raise AssertionError(f"lost: {last.seen} was seen before {last.keys}, recovered was {current.lines()}")


def main():
    rounds, kills = int(sys.argv[1]), sys.argv[2:]
    seed = random.randrange(1 << 30)
    chance = random.Random(seed)
    print(f"{rounds} rounds of {', '.join(kills)}, seed {seed}", flush=True)
    stage = Stage()
    home_display = os.environ["DISPLAY"]
    path = stage.file("a.lrc", ORIGINAL)
    last = None
    try:
        for number in range(rounds + 1):
            os.environ["DISPLAY"] = home_display
            current = Round(stage, path, kills[number % len(kills)], chance)
            if last:
                check(current, last)
            else:
                current.start()
            if number < rounds:
                current.work()
            last = current
    except BaseException:
        stage.picture("kill_while_editing")
        print(f"round {number}, {stage.said()}", flush=True)
        raise
    finally:
        stage.clear_away()
    print(f"{rounds} of {rounds}: nothing was lost", flush=True)


main()
