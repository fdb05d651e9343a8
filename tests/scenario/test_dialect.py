"""Lyrics in the form of other players, [mm:ss.cc]: opened, mended and saved, and copies in that form."""
import eyes
import hands
from case import Case

DOWNLOADED = ("\ufeff[ti:Song]\r\n[offset:+120]\r\n\r\n[00:01.204][00:31.20]one\r\n[00:02.50]two\r\n[0:03.5]three "
              "<00:03.90>words\r\n[Chorus]\r\n[00:04.999]last")


class Downloaded(Case):
    def test_one_tag_is_mended_and_every_other_byte_is_as_before(self):
        s = self.start(DOWNLOADED)
        s.wait_status("UTF-8 <CR LF> [mm:ss.cc]")
        hands.press(*["Down"] * 4)
        s.wait_selected(4)
        hands.press("plus")
        s.wait_rows("[ti:Song]", "[offset:+120]", "", "[00:01:20][00:31:20]one", "[00:02:51]two",
                    "[00:03:50]three <00:03.90>words", "[Chorus]", "[00:04:99]last")
        hands.press("ctrl+s")
        s.wait_status("Saved")
        s.wait_bytes(s.lyrics_file, DOWNLOADED.replace("[00:02.50]", "[00:02.51]").encode())


class Copies(Case):
    def test_one_key_writes_the_copy_next_to_the_song_and_saves_renew_it(self):
        s = self.start("[00:01:50]one\n")
        copy = s.root / "song.lrc"
        hands.press("ctrl+shift+e")
        s.wait_bytes(copy, b"[00:01.50]one\n")
        button = s.wait(lambda: eyes.find(s.window(), "push button", "Renew at every save"), "the offer to renew it")
        hands.click(eyes.place(button))
        s.wait_status("From now on")
        s.come_back()
        hands.press("plus", "ctrl+s")
        s.wait_bytes(copy, b"[00:01.51]one\n")
        s.wait_bytes(s.lyrics_file, b"[00:01:51]one\n\0")
