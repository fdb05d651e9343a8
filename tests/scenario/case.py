"""What every scenario shares: a stage of its own, and what was to be seen and read when something went wrong."""
import subprocess
import unittest

import stage


class Case(unittest.TestCase):
    def setUp(self):
        self.stage = stage.Stage()
        self.addCleanup(self.stage.clear_away)

    def start(self, text="one\n", **more):
        """The stage, on which the program shows a file of that text."""
        self.stage.lyrics_file = self.stage.file("a.lrc", text)
        self.stage.start(self.stage.lyrics_file, **more)
        return self.stage

    def run_beside(self, words, **more):
        """Another program, which is ended with the performance."""
        program = subprocess.Popen(words, env=self.stage.own(), **more)
        self.addCleanup(lambda: (program.kill(), program.wait()))
        return program

    def tearDown(self):
        outcome = self._outcome.result
        if any(test is self for test, _ in outcome.failures + outcome.errors):
            self.stage.picture(self.id().rsplit(".", 1)[-1])
            print(f"The program said:\n{self.stage.said()}")
