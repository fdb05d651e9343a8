"""After a crash: what was typed into a document without a name, and what a signal to end leaves."""
import signal

import eyes
import hands
from case import Case


class Recovery(Case):
    def write(self, text):
        hands.press("ctrl+e")
        hands.write(text)
        self.stage.wait(lambda: text in self.stage.text(), text)

    def recover(self):
        button = self.stage.wait(lambda: eyes.find(self.stage.window(), "push button", "Recover"), "the offer")
        self.stage.picture("recovery_notice")
        hands.click(eyes.place(button))
        self.stage.wait_status("Unsaved changes recovered")

    def test_what_was_typed_into_a_document_without_a_name_comes_back(self):
        s = self.stage
        s.start()
        self.write("never saved")
        s.stop()
        s.start()
        self.recover()
        s.wait_text("never saved\n")
        self.assertEqual(s.title(), "Untitled - Vesmo Editor")
        hands.press("ctrl+z")
        s.wait_text("\n")

    def test_a_signal_to_end_waits_for_nobody_who_cannot_answer(self):
        s = self.start()
        self.write("typed ")
        s.program.send_signal(signal.SIGTERM)
        s.wait_question("has unsaved changes")
        s.stop()
        s.start(s.lyrics_file)
        self.recover()
        s.wait_text("typed one\n")
