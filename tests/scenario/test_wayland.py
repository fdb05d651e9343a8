"""The program as a Wayland client: a nested compositor on the stage's display, which passes on the keys."""
import os
import pathlib

from case import Case

SOCKET = "scenario-wayland"


class UnderWayland(Case):
    def setUp(self):
        super().setUp()
        with open(self.stage.root / "weston.log", "wb") as log:
            self.run_beside(["weston", "--backend=x11-backend.so", "--no-config", "--idle-time=0", f"--socket={SOCKET}",
                             "--width=1200", "--height=760"], stdout=log, stderr=log)
        socket = pathlib.Path(os.environ["XDG_RUNTIME_DIR"]) / SOCKET
        self.stage.wait(socket.exists, "the compositor")

    def test_lyrics_are_stamped_and_the_log_says_that_the_windows_do_not_follow_each_other(self):
        s = self.start("one\ntwo\n", environment={"WAYLAND_DISPLAY": SOCKET, "DISPLAY": "", "QT_QPA_PLATFORM": "wayland"})
        s.stamp(0, "[00:00:00]one")
        s.forward(2)
        s.stamp(1, "[00:02:00]two")
        self.assertIn("do not follow each other", s.said())
        s.save(b"[00:00:00]one\n[00:02:00]two\n\0")
