"""The editor's dialogs: the save panel's menus, help, About."""
import hands
from case import Case


class SavePanel(Case):
    def test_encoding_and_line_ends_are_chosen_and_come_back_with_the_next_panel(self):
        s = self.start("歌\n詞\n")
        own = "[mm:ss:cc] (Vesmo Editor)"
        for key, marked, name, data in (
                ("Down", ["Shift-JIS", "CR LF (Windows)", own], "b.lrc", "歌\r\n詞\r\n".encode("cp932")),
                ("Up", ["JIS (ISO-2022-JP)", "CR", own], "c.lrc", "歌\r詞\r".encode("iso2022_jp"))):
            hands.press("ctrl+2")
            panel = s.wait_panel("Save lyrics")
            for menu in ("alt+e", "alt+r"):
                hands.press(menu, key, "Return")
            s.wait(lambda: s.marked_in_menus(panel) == marked, f"{marked} marked")
            s.fill_panel("Save lyrics", s.root / name)
            s.wait_title(name)
            s.wait_bytes(s.root / name, data)
        hands.press("ctrl+2")
        panel = s.wait_panel("Save lyrics")
        self.assertEqual(s.marked_in_menus(panel), ["JIS (ISO-2022-JP)", "CR", own])


class Others(Case):
    def test_about_shows_program_and_languages(self):
        s = self.start()
        for way in (lambda: s.choose("Help", "About Vesmo Editor"), lambda: s.click_button("About Vesmo Editor")):
            way()
            about = s.wait_window("About Vesmo Editor")
            hands.press("Right")
            s.wait(lambda: "日本語" in s.texts_in(about) and "English" in s.texts_in(about), "both languages")
            hands.press("Left")
            hands.press("Escape")
            s.come_back()
        s.stamp(0, "[00:00:00]one")

    def test_help_opens_in_the_desktops_own_opener(self):
        s = self.stage
        environment, opened = s.log_opened_files()
        s.start(environment=environment)
        s.choose("Help", "Help")
        s.wait(lambda: opened.exists() and opened.read_text().count("VesmoE.htm\n") == 1, "the help page opened")
        s.click_button("Help")
        s.wait(lambda: opened.read_text().count("VesmoE.htm\n") == 2, "the help page opened again")
