/** The player as the desktop sees it: driven by playerctl and dbus-send. */

#include "player/model/bus_messages.h"
#include "player/model/player_messages.h"
#include "plugin/message_codes.h"
#include "tests/player/app/player_questions.h"
#include "tests/player/bus/fake_player.h"
#include "tests/player/bus/private_bus.h"
#include "tests/player/sound/still_source.h"
#include "tests/support/scratch_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>

namespace {

/** What a command prints, without its line end. */
std::string output_of(const std::string& command) {
  std::string output;
  FILE* const pipe = popen((command + " 2>&1").c_str(), "r");
  std::array<char, 256> bytes{};
  while (pipe && std::fgets(bytes.data(), bytes.size(), pipe)) output += bytes.data();
  if (pipe) pclose(pipe);
  while (!output.empty() && output.back() == '\n') output.pop_back();
  return output;
}

std::string playerctl(const std::string& words) {
  return output_of("playerctl --player=sonivo " + words);
}

/** Gets a property that playerctl does not support, or sets it to `value`. */
std::string property(const std::string& name, const std::string& value = {}) {
  const std::string call = "dbus-send --session --print-reply=literal --dest=org.mpris.MediaPlayer2.sonivo "
                           "/org/mpris/MediaPlayer2 org.freedesktop.DBus.Properties.";
  const std::string what = " string:org.mpris.MediaPlayer2.Player string:" + name;
  return output_of(value.empty() ? call + "Get" + what : call + "Set" + what + " variant:" + value);
}

class Desktop : public testing::Test {
protected:
  Desktop() {
    fApp->PostMessage(kMsgFirstSong);
    fApp->PostMessage(kMsgOtherPlugins);
    EXPECT_EQ(UntilStatus("Paused"), "Paused");
    EXPECT_EQ(UntilTitle("Title of /music/one song.mp3"), "Title of /music/one song.mp3");
  }
  /** Requests are carried out asynchronously on the player's own thread. */
  template <typename Ask>
  static std::string Until(const std::string& expected, const Ask& ask) {
    std::string answer;
    for (int i = 0; i < 500 && (answer = ask()) != expected; ++i) snooze(20000);
    return answer;
  }
  static std::string UntilStatus(const std::string& expected) {
    return Until(expected, [] { return playerctl("status"); });
  }
  static std::string UntilTitle(const std::string& expected) {
    return Until(expected, [] { return playerctl("metadata title"); });
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
  EXPECT_EQ(UntilStatus("Playing"), "Playing");
  playerctl("play-pause");
  EXPECT_EQ(UntilStatus("Paused"), "Paused");
  playerctl("next");
  EXPECT_EQ(UntilTitle("Title of /music/two.mp3"), "Title of /music/two.mp3");
  playerctl("previous");
  EXPECT_EQ(UntilTitle("Title of /music/one song.mp3"), "Title of /music/one song.mp3");
  playerctl("stop");
  EXPECT_EQ(UntilStatus("Stopped"), "Stopped");
}

TEST_F(Desktop, TheCoverIsPublishedWhileItsSongPlays) {
  const auto send = [&](const char* song, const char* file) {
    BMessage cover(kMsgCover);
    cover.AddString("path", song);
    cover.AddString("file", file);
    fApp->PostMessage(&cover);
  };
  const auto cover = [] { return playerctl("metadata --format '{{mpris:artUrl}}'"); };
  send("/music/one song.mp3", "/cache/a b.jpg");
  EXPECT_EQ(Until("file:///cache/a%20b.jpg", cover), "file:///cache/a%20b.jpg");
  send("/music/two.mp3", "/cache/two.jpg");
  EXPECT_EQ(Until("", cover), "") << "found too early: it is another song's";
  playerctl("next");
  EXPECT_EQ(Until("file:///cache/two.jpg", cover), "file:///cache/two.jpg");
}

TEST_F(Desktop, SeeksAndSetsVolumeAndRateWithinTheirBounds) {
  const auto position = [] { return playerctl("position"); };
  playerctl("position 10");
  EXPECT_EQ(Until("10.000000", position), "10.000000");
  playerctl("position 5+");
  EXPECT_EQ(Until("15.000000", position), "15.000000");
  playerctl("position 100"); // there is no such place in this song
  playerctl("position 2-");
  EXPECT_EQ(Until("13.000000", position), "13.000000");
  playerctl("volume 0.4");
  EXPECT_EQ(Until("0.400000", [] { return playerctl("volume"); }), "0.400000");
  property("Rate", "double:9");
  EXPECT_EQ(Until("   variant       double 2", [] { return property("Rate"); }), "   variant       double 2");
  EXPECT_NE(property("LoopStatus", "string:Track").find("NotSupported"), std::string::npos);
  EXPECT_NE(property("Metadata", "string:x").find("PropertyReadOnly"), std::string::npos);
  EXPECT_NE(property("Nonsense").find("UnknownProperty"), std::string::npos);
}

TEST_F(Desktop, OpensAFileAndGoesOnWithoutTheBus) {
  const std::string file = fSettings.Write("third.mp3", "");
  playerctl("open file://" + file);
  EXPECT_EQ(UntilTitle("Title of " + file), "Title of " + file);
  playerctl("open https://example.org/a.mp3");
  EXPECT_EQ(UntilTitle("Title of https://example.org/a.mp3"), "Title of https://example.org/a.mp3");
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
    EXPECT_EQ(UntilTitle("Title of /music/one song.mp3"), "Title of /music/one song.mp3");
    playerctl("play");
    EXPECT_EQ(UntilStatus("Playing"), "Playing");
    playerctl("pause");
    EXPECT_EQ(UntilStatus("Paused"), "Paused");
  }
}

TEST_F(Desktop, FrontEndsGetTheOtherPlayersSong) {
  auto other = std::make_unique<FakePlayer>("fake", playing_song("file:///elsewhere/song.mp3"), [] { return 7000000; });
  const auto entry = [] { return path_of_entry(0); };
  const auto chosen = [&] {
    BMessage choice(kMsgChooseSource);
    choice.AddString("id", "fake");
    fApp->PostMessage(&choice);
    return entry();
  };
  EXPECT_EQ(Until("/elsewhere/song.mp3", chosen), "/elsewhere/song.mp3");
  EXPECT_EQ(playerctl("status"), "Stopped") << "its own sound is not the source";
  fApp->PostMessage(kMsgHostPlayPause);
  EXPECT_EQ(Until("Pause", [&] { return other->Received().empty() ? "" : other->Received().back(); }), "Pause");
  other.reset();
  EXPECT_EQ(Until("/music/one song.mp3", entry), "/music/one song.mp3") << "it has quit";
  EXPECT_EQ(UntilStatus("Paused"), "Paused");
}
