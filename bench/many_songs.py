"""How long the player's window takes to answer while 10,000 songs are added, filtered and sorted, beside its answers
while nothing happens. Started by many_songs.sh, in the folder of the scenarios."""
import pathlib
import shutil
import subprocess
import tempfile
import threading
import time

import eyes
import hands
from stage import BIN, Stage
from test_player import sound

SONGS = 10_000


class Answers:
    """Times of a question to the window's thread, asked again and again while something else goes on."""

    def __init__(self, window):
        self.window = window
        self.ms = []

    def ask(self):
        begin = time.monotonic()
        eyes.name(self.window)
        self.ms.append((time.monotonic() - begin) * 1000)

    def ask_until(self, is_done, what):
        deadline = time.monotonic() + 240
        while not is_done():
            self.ask()
            if time.monotonic() > deadline:
                raise AssertionError(f"never seen: {what}")
            time.sleep(0.002)

    def print_row(self, what, idle):
        ordered = sorted(self.ms)
        print(f"{what:<34} {len(ordered):>7} {ordered[len(ordered) // 2]:>10.1f} {ordered[-1]:>10.1f} "
              f"{ordered[-1] / sorted(idle.ms)[len(idle.ms) // 2]:>10.0f}")


def measure(window, what, idle, begin, is_done):
    answers = Answers(window)
    doing = threading.Thread(target=begin)
    doing.start()
    answers.ask_until(lambda: not doing.is_alive() and is_done(), what)
    quiet = time.monotonic() + 1  # what follows a little later belongs to it
    answers.ask_until(lambda: time.monotonic() > quiet, what)
    answers.print_row(what, idle)


def run(stage, folder):
    stage.launch(songs=[])
    player = eyes.wait_until(stage.player, "the player")
    eyes.wait_until(stage.window, "the editor")
    time.sleep(2)
    idle = Answers(player)
    end = time.monotonic() + 3
    idle.ask_until(lambda: time.monotonic() > end, "idle")
    print(f"{f'{SONGS} songs':<34} {'answers':>7} {'median ms':>10} {'longest':>10} {'of idle':>10}")
    idle.print_row("idle", idle)
    labels = eyes.find_all(player, "label")

    def are_tags_read():
        whole = f"{SONGS} songs, {SONGS // 3600}:{SONGS // 60 % 60:02}:{SONGS % 60:02}"
        return any(eyes.name(label) == whole for label in labels)

    add = [str(BIN / "sonivo"), str(folder)]
    measure(player, "added in one go, their tags read", idle,
            lambda: subprocess.run(add, env=stage.own(), check=True, timeout=60, stderr=subprocess.DEVNULL), are_tags_read)
    stage.focus_playlist()
    for what, keys in (("a name typed in the list", lambda: hands.write("song 09")),
                       ("filtered, a letter at a time", lambda: (hands.press("ctrl+f"), hands.write("song 0999"))),
                       ("the filter taken off", lambda: hands.press("Escape")),
                       ("sorted by title", lambda: hands.press("alt+m", "t", "t"))):
        measure(player, what, idle, keys, lambda: True)


def main():
    stage = Stage()
    folder = pathlib.Path(tempfile.mkdtemp(prefix="many-songs-"))
    try:
        (folder / "Song 00000.wav").write_bytes(sound(1))
        for number in range(1, SONGS):
            (folder / f"Song {number:05}.wav").hardlink_to(folder / "Song 00000.wav")
        run(stage, folder)
    finally:
        if stage.program:
            stage.program.kill()
            stage.program.wait()
        shutil.rmtree(folder)
        shutil.rmtree(stage.root, ignore_errors=True)


main()
