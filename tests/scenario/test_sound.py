"""The sound server fails: the player says what is heard, comes back to it, and ends without it."""
import eyes
import hands
from case import Case
from sound_server import SoundServer

SILENT = "No sound device: playing silently"


class TheSound(Case):
    def setUp(self):
        super().setUp()
        self.server = SoundServer(self.stage.root / "sound")
        self.addCleanup(self.server.kill)

    def start_playing(self):
        s = self.stage
        s.start(environment=self.server.environment)
        s.focus_playlist()
        hands.press("space")
        s.wait(lambda: s.position() > 0, "the song playing")

    def says_silent(self):
        return SILENT in self.stage.texts_in(self.stage.player())

    def test_after_a_restart_of_the_sound_server_the_song_is_heard_again(self):
        s = self.stage
        self.server.start()
        self.start_playing()
        self.assertFalse(self.says_silent())
        self.server.kill()
        s.wait(self.says_silent, "that nothing is heard")
        played = s.position()
        s.wait(lambda: s.position() > played, "the song going on")
        self.server.start()
        s.wait(lambda: not self.says_silent(), "that the song is heard")
        s.close_player()

    def test_the_player_ends_while_the_sound_server_hangs(self):
        s = self.stage
        self.server.start()
        self.start_playing()
        self.server.freeze()
        s.wait(lambda: "The sound server is not responding" in s.texts_in(s.player()), "why nothing is heard")
        hands.press("space", "Right", "plus")
        s.program.terminate()
        self.assertEqual(s.program.wait(timeout=eyes.PATIENCE), 0)
        kept = (s.config / "Sonivo/Playlist.m3u8").read_text()
        self.assertIn(str(s.song), kept)
