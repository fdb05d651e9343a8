#!/usr/bin/env python3
"""The program vesmo-lrc on real files: what it writes, says and ends with."""
import fcntl
import json
import os
import pathlib
import pty
import signal
import struct
import subprocess
import sys
import tempfile
import time
import unittest

TOOL = sys.argv.pop(1)
PATIENCE = 240


def digest_of(data):
    """As lyrics/digest.h computes it."""
    mask = (1 << 64) - 1
    value = ((14695981039346656037 ^ len(data)) * 1099511628211) & mask
    for i in range(0, len(data), 8):
        value = ((value ^ int.from_bytes(data[i:i + 8], "little")) * 1099511628211) & mask
        value = (value << 29 | value >> 35) & mask
    return value


def journal_header(process, path):
    """As docs/file-formats.md describes it."""
    text = str(path).encode()
    body = struct.pack("<QQQiQI", 1, 1, 1, process, 0, 0)
    body += struct.pack("<I", len(text)) + text + struct.pack("<iiqBBBBQQqqQ", 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0) + struct.pack("<i", 0)
    head = b"VESMOJNL" + struct.pack("<II", 1, len(body)) + body
    return head + struct.pack("<Q", digest_of(head))


class VesmoLrc(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.root = pathlib.Path(folder.name)

    def write(self, name, data):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data if isinstance(data, bytes) else data.encode())
        return path

    def run_tool(self, *words, given=b"", code=0, **more):
        done = subprocess.run([TOOL, *map(str, words)], input=given, capture_output=True, timeout=PATIENCE, **more)
        self.assertEqual(done.returncode, code, done.stderr.decode())
        return done.stdout, done.stderr.decode()

    def files(self):
        return sorted(path.relative_to(self.root).as_posix() for path in self.root.rglob("*") if path.is_file())

    def test_file_that_an_editor_has_changed_is_left_alone_unless_forced(self):
        a, b = self.write("a.lrc", "[00:01]a\n"), self.write("b.lrc", "[00:01]b\n")
        (self.root / "link.lrc").symlink_to(a)
        journals = self.root / "state/KOREVA/VesmoE/Journal"
        journals.mkdir(parents=True, mode=0o700)
        own = {**os.environ, "XDG_STATE_HOME": str(self.root / "state")}
        with open(journals / "1-a-1.journal", "wb") as journal:
            journal.write(journal_header(os.getpid(), self.root / "link.lrc"))
            journal.flush()
            fcntl.flock(journal, fcntl.LOCK_EX)
            said = self.run_tool("shift", "--by=1s", a, b, code=1, env=own)[1]
            self.assertIn(f"a.lrc: an editor (process {os.getpid()}) has unsaved changes in it", said)
            self.assertEqual((a.read_text(), b.read_text()), ("[00:01]a\n", "[00:02]b\n"))
            self.run_tool("shift", "--by=1s", "--force", a, env=own)
            self.assertEqual(a.read_text(), "[00:02]a\n")
        self.run_tool("shift", "--by=1s", a, env=own)
        self.assertEqual(a.read_text(), "[00:03]a\n")

    def test_folders_are_worked_on_as_a_whole_and_each_file_once(self):
        a, b = self.write("a.lrc", "[00:01.00]a\n"), self.write("x/y/b.LRC", "[00:01]b\n")
        other = self.write("x/song.txt", "[00:01]c\n")
        (self.root / "x/link.lrc").symlink_to("../a.lrc")
        (self.root / "x/round").symlink_to("..")
        a.chmod(0o640)
        before = os.stat(b).st_mtime_ns
        self.run_tool("shift", "--by", "30", self.root, a)
        self.assertEqual(a.read_bytes(), b"[00:01.03]a\n")
        self.assertEqual(a.stat().st_mode & 0o777, 0o640)
        self.assertEqual(os.stat(b).st_mtime_ns, before, "what stays the same is not written")
        self.assertEqual(other.read_bytes(), b"[00:01]c\n")
        self.assertTrue((self.root / "x/link.lrc").is_symlink())
        self.assertEqual(self.files(), ["a.lrc", "x/link.lrc", "x/song.txt", "x/y/b.LRC"])

    def test_every_name_of_a_file_sees_the_new_text(self):
        a = self.write("a.lrc", "[00:01]a\n")
        os.link(a, self.root / "b.lrc")
        self.run_tool("strip", self.root)
        self.assertEqual((self.root / "b.lrc").read_bytes(), b"a\n")
        self.assertEqual(self.files(), ["a.lrc", "b.lrc"])

    def test_a_dry_run_shows_a_difference_and_writes_nothing(self):
        a = self.write("a.lrc", "[00:01]a\nb\n")
        shown, _ = self.run_tool("shift", "--by", "1s", "-n", a)
        self.assertEqual(shown.decode(), f"--- {a}\n+++ {a}\n@@ -1,2 +1,2 @@\n-[00:01]a\n+[00:02]a\n b\n")
        shown, _ = self.run_tool("encode", "--to", "utf-8", "--eol", "crlf", "--dry-run", a)
        self.assertEqual(shown.decode(), f"{a}: UTF-8, LF becomes UTF-8, CR LF\n")
        self.assertEqual(a.read_bytes(), b"[00:01]a\nb\n")

    def test_pipes_carry_the_text_and_nothing_else(self):
        shown, said = self.run_tool("encode", "--to", "sjis", "-", given="日\n".encode())
        self.assertEqual((shown, said), ("日\n".encode("cp932"), ""))
        shown, _ = self.run_tool("export", "-", given=b"[00:01:50]a\n\0")
        self.assertEqual(shown, b"[00:01.50]a\n")
        self.run_tool("check", "-", given=b"[00:01:50]a\n", code=1)

    def test_one_bad_file_hinders_no_other(self):
        good, bad = self.write("good.lrc", "[00:01]日\n"), self.write("bad.lrc", "[00:01]é\n")
        _, said = self.run_tool("encode", "--to", "sjis", self.root, self.root / "missing", "/dev/null", code=1)
        self.assertIn("bad.lrc: Shift-JIS cannot hold line 1: é", said)
        self.assertIn("missing: no such file", said)
        self.assertIn("/dev/null: not a regular file", said)
        self.assertIn("1 file changed, 0 unchanged, 3 failed", said)
        self.assertEqual(good.read_bytes(), "[00:01]日\n".encode("cp932"))
        self.assertEqual(bad.read_bytes(), "[00:01]é\n".encode())

    def test_what_may_not_be_read_or_written_is_named(self):
        shut = self.write("shut.lrc", "[00:01]a\n")
        fixed = self.write("fixed.lrc", "[00:01]a\n")
        shut.chmod(0)
        fixed.chmod(0o444)
        if os.access(shut, os.R_OK):
            self.skipTest("no file is closed to root")
        _, said = self.run_tool("strip", self.root, code=1)
        self.assertEqual(said.count("permission denied"), 2)

    def test_a_file_of_too_many_lines_is_refused_before_it_takes_the_memory(self):
        path = self.write("a.lrc", "\n" * 500001)
        _, said = self.run_tool("shift", "--by", "30", path, code=1)
        self.assertIn("more than 500000 lines", said)

    def test_reports_are_whole_for_machines(self):
        self.write("a.lrc", "[00:01:00]a\n")
        self.write('b"\n.lrc', "[00:01.00]b <00:02.00>c\n")
        shown, _ = self.run_tool("check", "--format", "json", self.root, code=1)
        found = {pathlib.Path(file["file"]).name: [f["code"] for f in file["findings"]] for file in json.loads(shown)}
        self.assertEqual(found, {"a.lrc": ["colon-tags"], 'b"\n.lrc': []})
        shown, _ = self.run_tool("info", "--format", "tsv", self.root)
        rows = [row.split("\t") for row in shown.decode().splitlines()]
        self.assertEqual([(len(row), row[-1]) for row in rows], [(11, "lines with word times"), (11, "0"), (11, "1")])

    def test_copies_are_written_beside_nothing_that_is_there(self):
        self.write("in/a.lrc", "[00:01]a\n")
        self.write("in/x/a.lrc", "[00:02]b\n")
        out = self.root / "out"
        self.run_tool("export", "--to", "srt", "-o", out, self.root / "in")
        self.assertEqual(self.files()[2:], ["out/a.srt", "out/x/a.srt"])
        _, said = self.run_tool("export", "--to", "srt", "-o", out, self.root / "in", code=1)
        self.assertEqual(said.count("--force overwrites it"), 2)
        self.run_tool("export", "--to", "srt", "-f", "-o", out, self.root / "in")
        both = (self.root / "in/a.lrc", self.root / "in/x/a.lrc")
        self.run_tool("export", *both, code=2)
        self.run_tool("export", "-o", out, *both, code=2)

    def test_a_result_that_cannot_be_written_is_a_failure(self):
        a = self.write("a.lrc", "[00:01]a\n")
        with open("/dev/full", "wb") as full:
            done = subprocess.run([TOOL, "info", a], stdout=full, stderr=subprocess.PIPE, timeout=PATIENCE)
        self.assertEqual(done.returncode, 1)
        self.assertIn(b"could not be written", done.stderr)

    def test_a_terminal_gets_a_bar_and_a_clean_line_after_it(self):
        a = self.write("a.lrc", "[00:01.00]a\n")
        mine, its = pty.openpty()
        tool = subprocess.Popen([TOOL, "check", a, "-"], stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=its)
        os.close(its)
        said = b""
        try:
            while part := os.read(mine, 4096):
                said += part
                if b" of 2" in said:
                    tool.stdin.close()  # until then it waits
        except OSError:  # the other end is closed
            pass
        os.close(mine)
        self.assertEqual(tool.wait(PATIENCE), 0)
        self.assertIn(b"\r\x1b[K", said)
        self.assertTrue(said.endswith(b"0 files with findings, 2 without, 0 failed\r\n"))

    def test_a_check_that_is_stopped_ends(self):
        for number in range(3000):
            self.write(f"{number}.lrc", b"[00:02.00]a\n[00:01.00]b\n")
        tool = subprocess.Popen([TOOL, "check", self.root], stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        tool.stdout.readline()  # more than a pipe holds is still to come
        tool.terminate()
        tool.communicate(timeout=PATIENCE)
        self.assertEqual(tool.returncode, 128 + signal.SIGTERM)

    def test_whoever_stops_it_finds_every_file_old_or_new(self):
        old, new = b"[00:01.00]a\n" * 500, b"[00:02.00]a\n" * 500
        for number in range(1500):
            self.write(f"{number}.lrc", old)
        for stop in (signal.SIGTERM, signal.SIGKILL):
            tool = subprocess.Popen([TOOL, "shift", "--by", "1s", self.root], stderr=subprocess.PIPE)
            # As soon as it writes.
            while tool.poll() is None and not any(name.count(".saving-") for name in os.listdir(self.root)):
                time.sleep(0.001)
            tool.send_signal(stop)
            said = tool.communicate(timeout=PATIENCE)[1].decode()
            self.assertIn(tool.returncode, (-stop, 128 + stop, 0))
            changed = 0
            for path in self.root.glob("*.lrc"):
                self.assertIn(path.read_bytes(), (old, new))
                changed += path.read_bytes() == new
                path.write_bytes(old)
            if stop == signal.SIGTERM:
                self.assertRegex(said, rf"\b{changed} files? changed", "what was rolled back is not counted")
                self.assertFalse([name for name in self.files() if not name.endswith(".lrc")], "nothing is left")


unittest.main()
