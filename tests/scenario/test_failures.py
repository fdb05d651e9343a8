"""Files and folders that refuse: a clear message, and the text still in the editor."""
import os
import shutil
import subprocess
import unittest

import eyes
import hands
import stage
from case import Case

# The administrator may read and write everything; the program then runs without that right.
_RIGHTS = "-dac_override,-dac_read_search"
ORDINARY = ["setpriv", "--bounding-set", _RIGHTS, "--inh-caps", _RIGHTS] if os.geteuid() == 0 else []


class Refusals(Case):
    def test_a_file_that_cannot_be_read_leaves_the_open_one_alone(self):
        s = self.stage
        locked = s.file("locked.lrc", "secret\n")
        locked.chmod(0)
        self.start(prefix=ORDINARY)
        hands.press("ctrl+o")
        s.fill_panel("Open lyrics", locked, then_asks=True)
        s.answer("This lyrics file cannot be opened:", "Understood")
        self.assertEqual(s.title(), "a.lrc - Vesmo Editor")
        self.assertEqual(s.rows(), ["one"])

    def test_a_folder_that_takes_no_files_costs_no_text(self):
        s = self.stage
        lyrics = s.file("folder/a.lrc", "one\n")
        lyrics.chmod(0o444)
        lyrics.parent.chmod(0o555)
        s.start(lyrics, prefix=ORDINARY)
        s.stamp(0, "[00:00:00]one")
        hands.press("ctrl+s")
        s.answer("The lyrics could not be saved as:", "Understood")
        self.assertEqual(lyrics.read_bytes(), b"one\n")
        self.assertEqual([f.read_bytes() for f in (s.config / "VesmoE").glob("Recovered_*")], [b"[00:00:00]one\n\0"])
        hands.press("ctrl+2")  # and under another name they are saved
        s.fill_panel("Save lyrics", s.root / "b.lrc")
        s.wait_title("b.lrc")
        s.wait_bytes(s.root / "b.lrc", b"[00:00:00]one\n\0")

    def test_a_full_disk_leaves_the_old_file_whole(self):
        s = self.stage
        disk = s.root / "disk"
        disk.mkdir()
        if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", disk], capture_output=True).returncode:
            raise unittest.SkipTest("a small disk can be made by the administrator only")
        self.addCleanup(subprocess.run, ["umount", "-l", disk], check=True)
        lyrics = s.file("disk/a.lrc", "one\n")
        s.start(lyrics)
        with open(disk / "filler", "wb", buffering=0) as filler:
            try:
                while filler.write(b"x" * 4096):
                    pass
            except OSError:
                pass
        s.stamp(0, "[00:00:00]one")
        hands.press("ctrl+s")
        s.answer("The lyrics could not be saved as:", "Understood")
        self.assertEqual(lyrics.read_bytes(), b"one\n")
        (disk / "filler").unlink()
        hands.press("ctrl+s")
        s.wait_bytes(lyrics, b"[00:00:00]one\n\0")


class PlugIns(Case):
    def test_one_that_hangs_is_named_and_the_player_plays_and_ends_without_it(self):
        plugins = self.stage.root / "plugins"
        shutil.copytree(stage.BIN / "plugins", plugins)
        source = b"#include <unistd.h>\nvoid* NewPlugin(void* record) { for (;;) pause(); }\n"
        subprocess.run(["cc", "-shared", "-fPIC", "-x", "c", "-o", plugins / "gen_hanging.so", "-"], input=source, check=True)
        s = self.start(environment={"SONIVO_PLUGINS": str(plugins)})
        fault = "Plug-in gen_hanging.so is not responding: its NewPlugin has not returned"
        s.wait(lambda: fault in s.texts_in(s.player()), f"{fault!r} in the player's window")
        s.stamp(0, "[00:00:00]one")
        hands.close_window(eyes.name(s.player()))
        s.click_answer("a.lrc", "Yes")
        self.assertEqual(s.program.wait(timeout=eyes.PATIENCE), 1)
        self.assertEqual(s.lyrics_file.read_bytes(), b"[00:00:00]one\n\0")
        self.assertTrue((s.config / "VesmoE/VesmoE_ExitStates.arc").exists(), "the editor was ended as always")
