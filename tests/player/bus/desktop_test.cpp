/** The player as the desktop sees it: driven by playerctl and dbus-send. */

#include "player/app/choice_saver.h"
#include "player/model/bus_messages.h"
#include "plugin/message_codes.h"
#include "tests/player/app/player_questions.h"
#include "tests/player/bus/fake_player.h"
#include "tests/player/bus/private_bus.h"
#include "tests/player/sound/still_source.h"
#include "tests/support/output_of.h"

namespace {

std::string playerctl(const std::string& words) {
  return output_of("playerctl --player=sonivo " + words + " 2>&1");
}

/** Gets a property that playerctl does not support, or sets it to `value`. */
std::string property(const std::string& name, const std::string& value = {}) {
  const std::string call = "dbus-send --session --print-reply=literal --dest=org.mpris.MediaPlayer2.sonivo "
                           "/org/mpris/MediaPlayer2 org.freedesktop.DBus.Properties.";
  const std::string what = " string:org.mpris.MediaPlayer2.Player string:" + name;
  return output_of((value.empty() ? call + "Get" + what : call + "Set" + what + " variant:" + value) + " 2>&1");
}

struct Desktop : testing::Test {
  Desktop() {
    fApp->PostMessage(kMsgFirstSong);
    fApp->PostMessage(kMsgOtherPlugins);
    ExpectStatus("Paused");
    ExpectTitle("/music/one song.mp3");
  }
  /** Requests are carried out asynchronously on the player's own thread. */
  template <typename Ask>
  static void Expect(const std::string& expected, const Ask& ask) {
    std::string answer;
    EXPECT_TRUE(eventually([&] { return (answer = ask()) == expected; })) << answer << " instead of " << expected;
  }
  static void ExpectStatus(const std::string& expected) {
    Expect(expected, [] { return playerctl("status"); });
  }
  static void ExpectTitle(const std::string& song) {
    Expect("Title of " + song, [] { return playerctl("metadata title"); });
  }

  const ScratchFolder fSettings;
  const int fSet = setenv("XDG_CONFIG_HOME", fSettings.Path().c_str(), 1);
  PrivateBus fDaemon;
  StillPlayer fPlayer{{"/music/one song.mp3", "/music/two.mp3"}, true};
  TSonivoApp* const fApp = fPlayer.fApp;
};

} // namespace

TEST_F(Desktop, PlaysPausesAndPublishesTheSong) {
  EXPECT_EQ(playerctl("metadata --format '{{artist}}|{{mpris:length}}|{{xesam:url}}'"),
            "Somebody|60000000|file:///music/one%20song.mp3");
  playerctl("play");
  ExpectStatus("Playing");
  playerctl("play-pause");
  ExpectStatus("Paused");
  playerctl("next");
  ExpectTitle("/music/two.mp3");
  playerctl("previous");
  ExpectTitle("/music/one song.mp3");
  playerctl("stop");
  ExpectStatus("Stopped");
}

TEST_F(Desktop, TheCoverIsPublishedWhileItsSongPlays) {
  const auto send = [&](const char* song, const char* file) {
    tell_player(message_of(kMsgCover, "path", song, "file", file));
  };
  const auto cover = [] { return playerctl("metadata --format '{{mpris:artUrl}}'"); };
  send("/music/one song.mp3", "/cache/a b.jpg");
  Expect("file:///cache/a%20b.jpg", cover);
  send("/music/two.mp3", "/cache/two.jpg");
  Expect("", cover); // found too early: it is another song's
  playerctl("next");
  Expect("file:///cache/two.jpg", cover);
}

TEST_F(Desktop, SeeksAndSetsVolumeAndRateWithinTheirBounds) {
  const auto position = [] { return playerctl("position"); };
  output_of("dbus-send --session --print-reply --dest=org.mpris.MediaPlayer2.sonivo /org/mpris/MediaPlayer2 "
            "org.mpris.MediaPlayer2.Player.SetPosition objpath:/another/song int64:5000000 2>&1");
  playerctl("position 10");
  Expect("10.000000", position);
  EXPECT_EQ(fPlayer.fAccount.seeks, 1) << "a position for another song is ignored";
  playerctl("position 5+");
  Expect("15.000000", position);
  playerctl("position 100"); // there is no such place in this song
  playerctl("position 2-");
  Expect("13.000000", position);
  playerctl("volume 0.4");
  Expect("0.400000", [] { return playerctl("volume"); });
  property("Rate", "double:9");
  Expect("   variant       double 2", [] { return property("Rate"); });
  EXPECT_NE(property("Metadata", "string:x").find("PropertyReadOnly"), std::string::npos);
  EXPECT_NE(property("Nonsense").find("UnknownProperty"), std::string::npos);
}

TEST_F(Desktop, TheOrderIsChosenAndKeptForTheNextStart) {
  const auto modes = [] { return playerctl("shuffle") + " " + playerctl("loop"); };
  EXPECT_EQ(modes(), "Off None");
  EXPECT_EQ(playerctl("metadata --format '{{xesam:album}}|{{xesam:trackNumber}}'"), "Album|7");
  playerctl("next");
  ExpectTitle("/music/two.mp3");
  playerctl("loop Playlist");
  Expect("Off Playlist", modes);
  playerctl("next");
  ExpectTitle("/music/one song.mp3");
  playerctl("shuffle On");
  playerctl("loop Track");
  Expect("On Track", modes);
  for (const char* value : {"string:Never", "int32:1", "boolean:true"})
    EXPECT_NE(property("LoopStatus", value).find("InvalidArgs"), std::string::npos) << value;
  for (const char* value : {"string:true", "int32:1"})
    EXPECT_NE(property("Shuffle", value).find("InvalidArgs"), std::string::npos) << value;
  tell_player(BMessage(kMsgKeepChoices));
  wait_for(BMessenger(TSonivoApp::kSignature));
  const TPlayerChoices kept = TChoiceSaver(BMessenger()).Load();
  EXPECT_EQ(kept.modes, (TPlayingModes{.shuffles = true, .repeat = TRepeat::kSong}));
}

TEST_F(Desktop, OpensAFileAndGoesOnWithoutTheBus) {
  const std::string file = fSettings.Write("third.mp3", "");
  playerctl("open file://" + file);
  ExpectTitle(file);
  playerctl("open https://example.org/a.mp3");
  ExpectTitle("https://example.org/a.mp3");
  playerctl("open av://lavfi:anullsrc");
  wait_for_songs(5);
  EXPECT_EQ(path_of_entry(4), "av://lavfi:anullsrc") << "shown, and not played";
  EXPECT_EQ(playerctl("metadata title"), "Title of https://example.org/a.mp3");
  fDaemon.End();
  ask_player(BMessage(kMsgHostHandshake)); // is answered
}

TEST_F(Desktop, ABusThatWentAwayAndCameBackHasThePlayerAgain) {
  for (int i = 0; i < 2; ++i) {
    fDaemon.End();
    ask_player(BMessage(kMsgHostHandshake));
    fDaemon.Start();
    ExpectTitle("/music/one song.mp3");
    playerctl("play");
    ExpectStatus("Playing");
    playerctl("pause");
    ExpectStatus("Paused");
  }
}
