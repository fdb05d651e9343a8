"""The editor's window next to the player's: it follows, keeps its place, and asks when the player closes."""
import signal
import subprocess

import eyes
import hands
from case import Case
from stage import BIN


class BesideThePlayer(Case):
    def test_it_follows_the_player_and_comes_up_where_it_was_closed(self):
        s = self.start()
        left, top, width, height = eyes.place(s.window())
        player = eyes.place(s.player())
        hands.move_window(eyes.name(s.player()), player[0] + 40, player[1] + 30)
        place = (left + 40, top + 30, width, height)
        s.wait(lambda: eyes.place(s.window()) == place, f"the editor's window at {place}")
        s.close_player()
        s.start()
        s.wait(lambda: eyes.place(s.window()) == place, f"the editor's window at {place} again")

    def test_it_stays_where_it_is_while_the_player_is_on_another_desktop(self):
        s = self.start()
        left, top, width, height = eyes.place(s.window())
        x, y, *_ = eyes.place(s.player())
        hands.send_to_desktop(eyes.name(s.window()), 0)
        hands.send_to_desktop(eyes.name(s.player()), 1)
        hands.move_window(eyes.name(s.player()), x + 90, y + 90)
        s.wait(lambda: eyes.place(s.player())[:2] == (x + 90, y + 90), "the player's window moved")
        s.stamp(0, "[00:00:00]one")  # what came before has been handled
        self.assertEqual(eyes.place(s.window()), (left, top, width, height))
        hands.send_to_desktop(eyes.name(s.window()), 1)
        hands.move_window(eyes.name(s.player()), x + 40, y + 30)
        place = (left + 40, top + 30, width, height)
        s.wait(lambda: eyes.place(s.window()) == place, f"the editor's window at {place}")

    def test_closing_the_player_asks_for_changed_lyrics_first(self):
        s = self.start()
        s.stamp(0, "[00:00:00]one")
        for close in (lambda: hands.close_window(eyes.name(s.player())), lambda: hands.press("ctrl+q")):
            s.focus_playlist()
            close()
            s.answer("has unsaved changes", "Cancel")
        s.come_back()
        hands.press("plus")
        s.wait_rows("[00:00:01]one")
        s.close_player(lambda: s.click_answer("has unsaved changes", "Yes"))
        s.wait_bytes(s.lyrics_file, b"[00:00:01]one\n\0")

    def test_a_file_handed_over_during_a_question_is_opened_also_when_the_answer_closes_the_window(self):
        s = self.start()
        s.stamp(0, "[00:00:00]one")
        hands.press("ctrl+w")
        question = s.wait_question("has unsaved changes")
        hands.click(eyes.place(eyes.find(s.player(), "label", "0:00")))
        s.wait(lambda: "active" not in eyes.states(question), "the player in front")
        subprocess.run([BIN / "sonivo", "--edit", s.file("b.lrc", "two\n")], env=s.own(), check=True, timeout=eyes.PATIENCE)
        s.wait(lambda: "active" in eyes.states(question), "the question in front")
        s.click_answer("has unsaved changes", "No")
        s.wait_title("b.lrc")
        s.wait_rows("two")

    def test_a_signal_to_end_brings_the_waiting_question_forward_and_its_answer_holds(self):
        for answer, saved in (("Yes", b"[00:00:00]one\n\0"), ("No", b"one\n")):
            s = self.start()
            hands.press("space")
            hands.press("ctrl+w")
            question = s.wait_question("has unsaved changes")
            hands.click(eyes.place(eyes.find(s.player(), "label", "0:00")))
            s.wait(lambda: "active" not in eyes.states(question), "the player in front")
            s.program.send_signal(signal.SIGTERM)
            s.wait(lambda: "active" in eyes.states(question), "the question in front")
            s.click_answer("has unsaved changes", answer)
            self.assertEqual(s.program.wait(timeout=eyes.PATIENCE), 0)
            s.wait_bytes(s.lyrics_file, saved)
