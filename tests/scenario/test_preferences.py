"""The preferences of both plug-ins, worked by mouse and keyboard: what they change in the editor, and that it lasts."""
import pathlib

import eyes
import hands
from case import Case

TITLE = "Vesmo preferences"


class Preferences(Case):
    def open(self):
        # The player loads the companion, whose window this is, a while after the editor.
        maps = pathlib.Path(f"/proc/{self.stage.program.pid}/maps")
        self.stage.wait(lambda: "gen_VesmoD" in maps.read_text(), "the companion loaded")
        hands.press("ctrl+p")
        return self.stage.wait_window(TITLE)

    def control(self, window, label):
        """On the page that is shown."""
        def look():
            found = eyes.labelled(window, label)
            return found if found and "showing" in eyes.states(found) else None
        return self.stage.wait(look, f"the control {label!r}")

    def test_a_language_is_chosen_by_mouse_acts_at_once_and_is_there_after_a_restart(self):
        s = self.start()
        window = self.open()
        hands.click(eyes.place(self.control(window, "Language:")))

        def choice():
            return next((n for n in eyes.below(s.application())
                         if eyes.name(n) == "日本語" and "showing" in eyes.states(n)), None)
        hands.click(eyes.place(s.wait(choice, "日本語 among the languages")))
        s.wait(lambda: s.menu_item("ファイル"), "the editor's menus in Japanese")
        s.wait(lambda: eyes.name(window) == "Vesmo の環境設定", "the preferences in Japanese")
        s.wait(lambda: eyes.find(s.player(), "list", "プレイリスト"), "the player in Japanese")
        hands.press("Escape")
        s.come_back()
        s.close_player()
        s.start(s.lyrics_file)
        s.wait(lambda: s.menu_item("ファイル"), "Japanese after the restart")
        hands.press("space")
        s.wait_status("タグを打ちました：行 1")
        hands.press("ctrl+w")
        s.answer('"a.lrc"は変更されています', "はい")
        s.wait_bytes(s.lyrics_file, b"[00:00:00]one\n\0")

    def test_the_time_offset_is_added_to_the_next_stamp(self):
        s = self.start("one\ntwo\n")
        s.forward(2)
        s.stamp(0, "[00:02:00]one")
        window = self.open()
        hands.click(eyes.place(eyes.find(window, "page tab", "Timing")))
        hands.click(eyes.place(self.control(window, "Time offset of stamps (ms):")))
        hands.press("ctrl+a")
        hands.write("-140")
        hands.press("Escape")
        s.come_back()
        s.wait_selected(1)
        s.stamp(1, "[00:01:86]two")

    def test_on_a_small_screen_the_window_fits_and_scrolls_to_the_control_with_the_keyboard(self):
        s = self.stage
        s.start(environment={"QT_SCALE_FACTOR": "2"})  # 640 x 400
        window = self.open()
        s.wait(lambda: sum(eyes.place(window)[1::2]) <= 400, "the window on the screen")
        below = eyes.place(eyes.find(window, "push button", "Close"))[1]
        hands.press("ctrl+Tab", *["Tab"] * 9)

        def is_shown():
            node = eyes.focused(window)
            top, height = eyes.place(node)[1::2] if node else (0, 0)
            return node and eyes.name(node) == "Frame the current line" and top + height < below
        s.wait(is_shown, "the last control in sight")
