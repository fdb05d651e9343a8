#!/usr/bin/python3
"""Kills the program while real keys stamp, type, undo and save, and looks for the document in the next start.

kill_while_editing.py ROUNDS KILLS...    KILLS: kill (-9), display (its display server is killed), sound (a fault in the
thread that plays). A model (edit_model.py) knows which documents the keys lead to. After the kill the document must be one
of them, in the file or behind "Recover" with its undo history: at least the one last seen on the screen, without its last
step if that was seen less than STEP_IN_FLIGHT_S before the kill. The file is as it was before, or wholly as it was saved.
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

import edit_model
import eyes
import hands
from eyes import wait_until
from stage import Stage

LINES = ("one", "two", "three", "four", "five")
ROUNDS_WITH_ONE_FILE = 10
STEP_IN_FLIGHT_S = 0.5
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


class File:
    """The document's file, and which contents it may have."""

    def __init__(self, path):
        self.path = path
        self.allowed = {path.read_bytes()}

    def check(self):
        data = self.path.read_bytes()
        if data not in self.allowed:
            raise AssertionError(f"the file holds {data} instead of one of {self.allowed}")
        self.allowed = {data}
        return tuple(data.rstrip(b"\0").decode().split("\n")[:-1])


class Round:
    """One program, from its start to its violent end."""

    def __init__(self, stage, file, how, chance):
        self.stage, self.file, self.how, self.chance = stage, file, how, chance
        self.is_killed = False
        self.seen = None
        self.display = Display() if how == "display" else None
        if self.display:
            os.environ["DISPLAY"] = self.display.name

    def lines(self):
        if eyes.role(self.stage.lyrics()) != "text":
            return tuple(self.stage.rows())
        lines = self.stage.text().split("\n")
        return tuple(lines[:-1] if lines[-1] == "" else lines)

    def journals(self):
        return list((self.stage.root / "state/KOREVA/VesmoE/Journal").glob("*.journal"))

    def offer(self):
        return eyes.find(self.stage.window(), "push button", "Recover")

    def start(self, last):
        """Recovers what is offered. Then the document must be one of those that the last round may have left."""
        on_disk = self.file.check()
        self.stage.start(self.file.path)
        wait_until(lambda: self.offer() or not self.journals(), "an offer of what is in the journal")
        is_offered = self.offer() is not None
        if is_offered:
            hands.click(eyes.place(self.offer()))
            wait_until(lambda: not self.offer(), "the offer gone")
            hands.click(eyes.place(self.stage.lyrics()))
        lines = self.lines()
        worlds = last.worlds_with(lines) if last else {edit_model.opened(on_disk)}
        if not worlds or not (is_offered or lines == on_disk):
            raise AssertionError(f"lost: {lines} {'recovered' if is_offered else 'opened'} after {last.told()}")
        if not is_offered:
            worlds = {edit_model.opened(on_disk)}
        self.begin(worlds)

    def begin(self, worlds):
        is_text = eyes.role(self.stage.lyrics()) == "text"
        hands.press(edit_model.FIRST_LINE[is_text])
        position = self.stage.position()
        self.tags = [f"[00:{position:02}:00]"]  # a busy player may answer as before its last seek
        for _ in range(0 if is_text else self.chance.randrange(3)):  # the key moves the caret in a text
            position += 2
            self.stage.forward(position)
            self.tags.append(f"[00:{position:02}:00]")
        self.keys = []    # pressed so far
        self.worlds = [{world._replace(is_text=is_text, line=0) for world in worlds}]  # before, and after each key
        self.low = 0      # so many keys have had their effect on the screen, at least
        self.low_since = time.monotonic()

    def press(self, key):
        self.keys.append(key)
        self.worlds.append(edit_model.after_key(self.worlds[-1], key, self.tags))
        hands.press(*edit_model.presses(key, self.is_text(-2)))

    def is_text(self, index=-1):
        return next(iter(self.worlds[index])).is_text

    def look(self):
        """Compares the screen with the model, which may be ahead of it."""
        deadline = time.monotonic() + eyes.PATIENCE
        while True:
            self.seen = lines = self.lines()
            known = [i for i in range(self.low, len(self.worlds)) if any(w.lines == lines for w in self.worlds[i])]
            if known:
                break
            if time.monotonic() > deadline:
                raise AssertionError(f"the screen shows {lines} after {self.told()}")
        if known[0] > self.low:
            self.low, self.low_since = known[0], time.monotonic()
        if len(known) == 1:
            self.forget_all_but(known[0], lines)

    def forget_all_but(self, index, lines):
        self.worlds[index] = {world for world in self.worlds[index] if world.lines == lines}
        for i in range(index, len(self.keys)):
            self.worlds[i + 1] = edit_model.after_key(self.worlds[i], self.keys[i], self.tags)

    def work(self):
        """Presses keys, and looks after each, until the program is gone."""
        killer = threading.Timer(self.chance.uniform(0.2, 3), self.kill)
        killer.start()
        while self.stage.program.poll() is None:
            try:
                self.press(self.chance.choice(edit_model.keys_for(self.worlds[-1])))
                time.sleep(self.chance.choice([0, 0, 0.05, 0.3]))
                self.look()
            except Exception:
                if not self.is_killed:
                    killer.cancel()
                    raise
                break
        killer.join()
        self.stage.program.wait(timeout=eyes.PATIENCE)
        self.file.allowed = self.saved()

    def kill(self):
        pid = self.stage.program.pid
        self.killed_at, self.is_killed = time.monotonic(), True
        if self.how == "kill":
            os.kill(pid, signal.SIGKILL)
        elif self.how == "display":
            self.display.kill()
        else:
            tasks = pathlib.Path(f"/proc/{pid}/task").iterdir()
            thread = next(int(t.name) for t in tasks if (t / "comm").read_text().startswith(("mpv", "ao")))
            ctypes.CDLL(None).syscall(SYS_TGKILL, pid, thread, signal.SIGSEGV)

    def worlds_with(self, lines):
        """Those with these lines among all that the round may have left."""
        is_in_flight = self.killed_at - self.low_since < STEP_IN_FLIGHT_S
        first = max(self.low - 1, 0) if is_in_flight else self.low
        return {world for worlds in self.worlds[first:] for world in worlds if world.lines == lines}

    def saved(self):
        """Contents of the file: by the last save before a document that was seen, or any later one."""
        saves = [i for i, key in enumerate(self.keys) if key == "save"]
        last_known = max((i for i in saves if i < self.low), default=None)
        allowed = set() if last_known is not None else set(self.file.allowed)
        for i in saves:
            if last_known is None or i >= last_known:
                allowed |= {bytes_of(world.lines) for world in self.worlds[i]}
        return allowed

    def told(self):
        known = [world.lines for world in self.worlds[self.low]]
        return f"{self.keys}: after {self.low} of them the screen showed {known}, last it showed {self.seen}"


def main():
    rounds, kills = int(sys.argv[1]), sys.argv[2:]
    seed = int(os.environ.get("SEED", random.randrange(1 << 30)))
    chance = random.Random(seed)
    print(f"{rounds} rounds of {', '.join(kills)}, seed {seed}", flush=True)
    home_display = os.environ["DISPLAY"]
    stage, current, last = None, None, None
    try:
        for number in range(rounds + 1):
            os.environ["DISPLAY"] = home_display
            if stage is None:
                stage = Stage()
                file = File(stage.file("a.lrc", "".join(line + "\n" for line in LINES)))
            current = Round(stage, file, kills[number % len(kills)] if number < rounds else "kill", chance)
            current.start(last)
            if number == rounds:
                break
            is_last_with_file = number % ROUNDS_WITH_ONE_FILE == ROUNDS_WITH_ONE_FILE - 1
            current.work()
            last = current
            if is_last_with_file and number + 1 < rounds:
                os.environ["DISPLAY"] = home_display
                Round(stage, file, "kill", chance).start(last)
                stage.clear_away()
                stage, last = None, None
    except BaseException:
        stage.picture("kill_while_editing")
        print(f"round {number}, {stage.said()}", flush=True)
        raise
    finally:
        if current and current.display:
            current.display.kill()
        if stage:
            stage.clear_away()
    print(f"{rounds} of {rounds}: nothing was lost", flush=True)


main()
