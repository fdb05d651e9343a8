"""Lyrics inside the song that is playing."""
import hands
from case import Case


class SongLyrics(Case):
    def test_lyrics_are_written_into_the_song_and_open_from_inside_it(self):
        s = self.start("[00:01:50]one\ntwo\n")
        old = s.song.read_bytes()
        s.choose("File", "Write into the song…")
        s.answer("LYRICS – lines: 2, time tags: 1", "Cancel")
        self.assertEqual(s.song.read_bytes(), old)
        s.choose("File", "Write into the song…")
        s.answer("Write the lyrics into this song?", "Write")
        s.wait_status("Lyrics written into the song song.opus")
        self.assertNotEqual(s.song.read_bytes(), old)
        hands.press("ctrl+n")
        s.wait_title("Untitled")
        hands.press("ctrl+l")
        s.wait_rows("[00:01:50]one", "two")
        s.wait_status("Lyrics from inside the song song.opus")
        self.assertEqual(s.title(), "Untitled - Vesmo Editor")
        s.choose("File", "Write into the song…")
        s.wait_question("These lyrics inside the song are replaced")
        s.picture("write_into_song")
        s.answer("These lyrics inside the song are replaced", "Cancel")
        s.file("song.lrc", "beside\n")
        hands.press("ctrl+l")
        s.wait_title("song.lrc")
