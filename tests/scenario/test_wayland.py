"""The program as a Wayland client: a nested compositor on the stage's display, which passes on the keys."""
import os
import pathlib
import subprocess

import eyes
import hands
from case import Case

SOCKET = "scenario-wayland"


class UnderWayland(Case):
    def setUp(self):
        super().setUp()
        with open(self.stage.root / "weston.log", "wb") as log:
            self.compositor = subprocess.Popen(
                ["weston", "--backend=x11-backend.so", "--no-config", "--idle-time=0", f"--socket={SOCKET}",
                 "--width=1200", "--height=760"], stdout=log, stderr=log)
        self.addCleanup(self.end_compositor)
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / SOCKET
        self.stage.wait(socket.exists, "the compositor")

    def end_compositor(self):
        self.compositor.terminate()
        self.compositor.wait(timeout=eyes.PATIENCE)

    def test_lyrics_are_stamped_and_the_log_says_that_the_windows_do_not_follow_each_other(self):
        s = self.stage
        lyrics = s.file("a.lrc", "one\ntwo\n")
        s.start(lyrics, environment={"WAYLAND_DISPLAY": SOCKET, "DISPLAY": "", "QT_QPA_PLATFORM": "wayland"})
        s.stamp(0, "[00:00:00]one")
        s.forward(2)
        s.stamp(1, "[00:02:00]two")
        self.assertIn("do not follow each other", s.said())
        hands.press("ctrl+s")
        s.wait_bytes(lyrics, b"[00:00:00]one\n[00:02:00]two\n\0")
