"""The File menu: new, open, save, save as, recent files, close, and the questions before something is lost."""
import eyes
import hands
from case import Case


class Opening(Case):
    def test_the_lyrics_of_the_song_that_plays_open_by_key_menu_and_button(self):
        self.stage.file("song.lrc", "sung\n")
        s = self.start()
        hands.press("ctrl+l")
        s.wait_title("song.lrc")
        s.wait_rows("sung")
        for way in (lambda: s.choose("File", "Open lyrics of current song"),
                    lambda: s.click_button("Open lyrics of current song")):
            hands.press("ctrl+n")
            s.wait_title("Untitled")
            way()
            s.wait_title("song.lrc")

    def test_a_missing_file_can_be_created(self):
        s = self.start()
        missing = s.root / "song.txt"
        hands.press("ctrl+l")
        s.answer("This file does not exist", "No")
        self.assertFalse(missing.exists())
        self.assertEqual(s.title(), "a.lrc - Vesmo Editor")
        hands.press("ctrl+l")
        s.answer("This file does not exist", "Yes")
        s.wait_title("song.txt")
        s.wait_rows("")
        s.wait_bytes(missing, b"")


class Saving(Case):
    def test_save_by_key_menu_and_button_keeps_encoding_and_line_ends(self):
        s = self.start("歌\r\n詞\r\n".encode("cp932"))
        s.wait_status("Shift-JIS <CR LF>")
        for row, way in enumerate((lambda: hands.press("ctrl+s"), lambda: s.click_button("Save"))):
            hands.press("space")
            s.wait_status(f"Stamped line {row + 1}")
            way()
            s.wait_status("Saved")
        s.wait_bytes(s.lyrics_file, "[00:00:00]歌\r\n[00:00:00]詞\r\n".encode("cp932"))
        hands.press("plus")
        s.wait_rows("[00:00:00]歌", "[00:00:01]詞")
        s.choose("File", "Save")
        s.wait_bytes(s.lyrics_file, "[00:00:00]歌\r\n[00:00:01]詞\r\n".encode("cp932"))


class Exporting(Case):
    def test_a_copy_for_other_programs_leaves_the_lyrics_as_they_are(self):
        kept = self.stage.file("a.srt", "kept\n")
        s = self.start("[00:01:50]one\n[00:03:00]two\n")
        hands.press("Delete")
        s.wait_rows("one", "[00:03:00]two")
        s.choose("File", "Export…")
        panel = s.wait_panel("Export lyrics")
        self.assertEqual(eyes.text_of(eyes.find(panel, "text")), "a.dotted.lrc")
        hands.press("alt+f")
        hands.press("Up", "Return")
        s.wait(lambda: eyes.text_of(eyes.find(panel, "text")) == "a.srt", "the name of subtitles")
        hands.press("Return")
        s.answer("already exists", "Yes")
        s.wait_bytes(kept, b"1\n00:00:03,000 --> 00:00:08,000\ntwo\n\n")
        hands.press("ctrl+z")
        s.wait_rows("[00:01:50]one", "[00:03:00]two")
        s.wait_bytes(s.lyrics_file, b"[00:01:50]one\n[00:03:00]two\n")


class RecentFiles(Case):
    def names(self):
        names = [eyes.name(item) for item in self.stage.items_of("File", "Open…")]
        return names[:names.index("")]

    def test_they_open_by_key_and_mouse_newest_first_and_are_kept(self):
        s = self.stage
        files = [s.file(name, name + "\n") for name in ("a.lrc", "b.lrc", "c.lrc")]
        s.start(files[0])
        for path, way in zip(files[1:], (lambda: s.choose_by_mouse("File", "Open…"), lambda: s.click_button("Open…"))):
            way()
            s.fill_panel("Open lyrics", path)
            s.wait_title(path.name)
        s.wait(lambda: self.names() == ["c.lrc", "b.lrc", "a.lrc"], "three recent files, the newest first")
        hands.press("ctrl+shift+1")
        s.wait_title("b.lrc")
        s.wait(lambda: self.names() == ["b.lrc", "c.lrc", "a.lrc"], "the opened one in front")
        s.choose_by_mouse("File", "Open…", "a.lrc")
        s.wait_title("a.lrc")
        s.stop()
        s.start()
        s.wait(lambda: self.names() == ["a.lrc", "b.lrc", "c.lrc"], "the files of the last run")
        s.choose("File", "Open…", "c.lrc")
        s.wait_title("c.lrc")

    def test_one_is_dropped_with_the_alt_key_or_because_it_is_gone_and_all_are_cleared(self):
        s = self.start("a\n")
        hands.press("ctrl+o")
        s.fill_panel("Open lyrics", s.file("b.lrc", "b\n"))
        s.wait_title("b.lrc")
        s.wait(lambda: self.names() == ["b.lrc", "a.lrc"], "two recent files")
        s.lyrics_file.unlink()
        hands.press("ctrl+shift+1")
        s.answer("This file does not exist", "No")
        s.wait(lambda: self.names() == ["b.lrc"], "the missing file off the list")
        hands.press("ctrl+o")
        s.fill_panel("Open lyrics", s.file("c.lrc", "c\n"))
        s.wait(lambda: self.names() == ["c.lrc", "b.lrc"], "two recent files again")
        s.choose_by_mouse("File", "Open…", "b.lrc", held="alt")
        s.answer('Remove "b.lrc"', "Yes")
        s.wait(lambda: self.names() == ["c.lrc"], "one recent file")
        self.assertEqual(s.title(), "c.lrc - Vesmo Editor")
        s.choose("File", "Open…", "Clear recent files")
        s.answer("Clear the list of recent files", "No")
        self.assertEqual(self.names(), ["c.lrc"])
        s.choose("File", "Open…", "Clear recent files")
        s.answer("Clear the list of recent files", "Clear all")
        s.wait(lambda: self.names() == [], "no recent file")
        item = s.menu_item("File", "Open…", "Clear recent files")
        self.assertNotIn("enabled", eyes.states(item))
