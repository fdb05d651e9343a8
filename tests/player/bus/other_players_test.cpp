/** Other players on the bus as the source of the song: good ones, liars, silent ones, and those that leave. */

#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/app/messenger.h"
#include "platform/kernel/threads.h"
#include "player/bus/bus.h"
#include "player/model/bus_messages.h"
#include "tests/player/bus/fake_player.h"
#include "tests/player/bus/private_bus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <condition_variable>
#include <mutex>

namespace {

using testing::ElementsAre;

/** Receives the reports of the bus instead of the application. */
class Listener : public BLooper {
public:
  Listener() : BLooper("listener") { Run(); }
  void MessageReceived(BMessage* message) override {
    const std::lock_guard lock(fMutex);
    if (message->what == kMsgBusPlayers) fPlayers = *message;
    if (message->what == kMsgBusOtherIs) fOther = *message;
    ++fNews;
    fChanged.notify_all();
  }
  template <typename Condition>
  bool Wait(const Condition& condition) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return condition(); });
  }
  bool Knows(const std::string& id) {
    const std::lock_guard lock(fMutex);
    std::string found;
    for (int32 i = 0; fPlayers.FindString("id", i, &found) == B_OK; ++i)
      if (found == id) return true;
    return false;
  }
  std::string Text(const char* field) {
    const std::lock_guard lock(fMutex);
    std::string text;
    fOther.FindString(field, &text);
    return text;
  }
  bool Flag(const BMessage& message, const char* field) {
    const std::lock_guard lock(fMutex);
    bool flag = false;
    message.FindBool(field, &flag);
    return flag;
  }

  BMessage fPlayers;
  BMessage fOther;
  int fNews = 0;

private:
  std::recursive_mutex fMutex; // guards fPlayers, fOther, fNews
  std::condition_variable_any fChanged;
};

class OtherPlayers : public testing::Test {
protected:
  ~OtherPlayers() override {
    fBus.reset();
    if (fListener->Lock()) fListener->Quit();
  }
  void Choose(const std::string& id) {
    ASSERT_TRUE(fListener->Wait([&] { return fListener->Knows(id); }));
    fBus->Choose(id);
    ASSERT_TRUE(fListener->Wait([&] { return fListener->Text("id") == id; }));
  }
  /** Polls, as the editor does. */
  template <typename Condition>
  bool Look(const Condition& condition) {
    for (int i = 0; i < 3000; ++i) {
      if (condition()) return true;
      snooze(10000);
    }
    return false;
  }

  PrivateBus fDaemon;
  Listener* fListener = new Listener;
  std::unique_ptr<TBus> fBus = std::make_unique<TBus>(BMessenger(fListener), [] { return 0; });
};

} // namespace

TEST_F(OtherPlayers, TheirSongIsReportedAndTheirPositionFollowed) {
  std::atomic<bigtime_t> startUs = system_time() - 5000000;
  FakePlayer player("fake", playing_song("file:///music/a%20song%E3%81%82.mp3"),
                    [&] { return (system_time() - startUs) / 250000 * 250000; });
  fBus->Start();
  Choose("fake");
  EXPECT_EQ(fListener->Text("path"), "/music/a songあ.mp3");
  EXPECT_EQ(fListener->Text("title"), "A title");
  EXPECT_EQ(fListener->Text("artist"), "One, Two");
  EXPECT_TRUE(Look([&] { return std::abs(fBus->PositionMs() - (system_time() - startUs) / 1000) < 40; }));

  startUs -= 30000000;
  player.SignalSeeked(system_time() - startUs);
  EXPECT_TRUE(Look([&] { return std::abs(fBus->PositionMs() - (system_time() - startUs) / 1000) < 40; }));
  player.Change({{"PlaybackStatus", "Paused"}, {"Metadata", QVariantMap{{"xesam:title", 5}, {"mpris:length", "x"}}}});
  EXPECT_TRUE(fListener->Wait([&] { return fListener->Text("title") == "5"; }));
  EXPECT_EQ(fListener->Text("path"), "") << "what is said in another type than it should be harms nothing";
}

TEST_F(OtherPlayers, ThePositionOfAPausedSongIsKnownWhenItIsReported) {
  QVariantMap song = playing_song("file:///a.mp3");
  song["PlaybackStatus"] = "Paused";
  std::atomic<qlonglong> positionUs = 7000000;
  FakePlayer player("fake", song, [&] { return positionUs.load(); });
  fBus->Start();
  Choose("fake");
  EXPECT_EQ(fBus->PositionMs(), 7000);
  int newsBefore = 0;
  fListener->Wait([&] {
    newsBefore = fListener->fNews;
    return true;
  });
  positionUs = 9000000;
  player.SignalSeeked(positionUs);
  EXPECT_TRUE(fListener->Wait([&] { return fListener->fNews > newsBefore; }));
  EXPECT_EQ(fBus->PositionMs(), 9000);
  positionUs = 8000000;
  fBus->SeekTo(8000);
  EXPECT_EQ(fBus->PositionMs(), 8000) << "at once, for the next time tag";
}

TEST_F(OtherPlayers, CommandsReachThemAsFarAsTheySupportThem) {
  QVariantMap song = playing_song("file:///a.mp3");
  FakePlayer player("fake", song, [] { return 3000000; });
  fBus->Start();
  Choose("fake");
  fBus->SetPaused(true);
  fBus->SeekTo(7000);
  fBus->SetSpeed(0.5);
  fBus->SetVolume(30);
  fBus->Skip(1);
  EXPECT_TRUE(Look([&] { return player.Received().size() == 5; }));
  EXPECT_THAT(player.Received(),
              ElementsAre("Pause", "SetPosition /track/1 7000000", "Set org.mpris.MediaPlayer2.Player Rate 0.5",
                          "Set org.mpris.MediaPlayer2.Player Volume 0.3", "Next"));
  player.Change({{"CanSeek", false}, {"CanPlay", false}, {"PlaybackStatus", "Paused"}});
  int32 state = 0;
  EXPECT_TRUE(fListener->Wait([&] { return fListener->fOther.FindInt32("state", &state) == B_OK && state == 2; }));
  fBus->SeekTo(8000);
  fBus->SetPaused(false);
  fBus->Skip(-1);
  EXPECT_TRUE(Look([&] { return player.Received().size() > 5; }));
  EXPECT_EQ(player.Received()[5], "Previous") << "unsupported commands are not sent";
}

TEST_F(OtherPlayers, OneThatDoesNotAnswerIsReportedAndBlocksNothing) {
  FakePlayer player("fake", playing_song("file:///a.mp3"), system_time);
  fBus->Start();
  Choose("fake");
  player.FallSilent();
  EXPECT_TRUE(Look([&] {
    fBus->PositionMs();
    return fListener->Flag(fListener->fOther, "silent");
  }));
  const int32 standsAtMs = fBus->PositionMs();
  snooze(50000);
  EXPECT_EQ(fBus->PositionMs(), standsAtMs) << "its position is unknown";
  player.Speak();
  EXPECT_TRUE(Look([&] {
    fBus->PositionMs();
    return !fListener->Flag(fListener->fOther, "silent");
  }));
}

TEST_F(OtherPlayers, PlayersAreListedAsTheyComeAndGoAndASecondInstanceHasItsOwnName) {
  fBus->Start();
  EXPECT_TRUE(fListener->Wait([&] { return fListener->Flag(fListener->fPlayers, "reachable"); }));
  {
    FakePlayer late("late.instance1", {}, {});
    EXPECT_TRUE(fListener->Wait([&] { return fListener->Knows("late.instance1"); }));
    TBus second(BMessenger(fListener), [] { return 0; });
    second.Start();
    const std::string secondId = "sonivo.instance" + std::to_string(getpid());
    EXPECT_TRUE(fListener->Wait([&] { return fListener->Knows(secondId); }));
    fBus->Choose("late.instance1");
  }
  EXPECT_TRUE(fListener->Wait([&] { return !fListener->Knows("late.instance1"); }));
  fBus->PositionMs();
  fBus->SetPaused(true);
}

TEST_F(OtherPlayers, ABusThatStartsAfterThePlayerIsFound) {
  fDaemon.End();
  fBus->Start();
  EXPECT_TRUE(fListener->Wait([&] { return fListener->fNews > 0; }));
  EXPECT_FALSE(fListener->Flag(fListener->fPlayers, "reachable"));
  fDaemon.Start();
  FakePlayer late("late", {}, {});
  EXPECT_TRUE(fListener->Wait([&] { return fListener->Knows("late"); }));
}

TEST_F(OtherPlayers, ATitleOfMegabytesIsCutAtACharacter) {
  std::string longTitle;
  while (longTitle.size() < 5000000) longTitle += "語";
  QVariantMap properties = playing_song("file:///music/a.mp3");
  QVariantMap metadata = properties["Metadata"].toMap();
  metadata["xesam:title"] = QString::fromStdString(longTitle);
  metadata["xesam:artist"] = QStringList{QString::fromStdString(longTitle)};
  properties["Metadata"] = metadata;
  const FakePlayer player("fake", properties);
  fBus->Start();
  Choose("fake");
  EXPECT_EQ(fListener->Text("title"), longTitle.substr(0, 1023));
  EXPECT_EQ(fListener->Text("artist"), longTitle.substr(0, 1023));
}

TEST_F(OtherPlayers, ALostOrMissingBusIsReported) {
  testing::internal::CaptureStderr();
  fBus->Start();
  EXPECT_TRUE(fListener->Wait([&] { return fListener->Flag(fListener->fPlayers, "reachable"); }));
  fDaemon.End();
  EXPECT_TRUE(fListener->Wait([&] { return !fListener->Flag(fListener->fPlayers, "reachable"); }));
  fBus->Choose("fake");
  EXPECT_EQ(fBus->PositionMs(), 0);
  fBus->SeekTo(1);
  fBus.reset();

  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  fListener->fNews = 0;
  TBus nowhere(BMessenger(fListener), [] { return 0; });
  nowhere.Start();
  EXPECT_TRUE(fListener->Wait([&] { return fListener->fNews > 0; }));
  EXPECT_FALSE(fListener->Flag(fListener->fPlayers, "reachable"));
  EXPECT_NE(testing::internal::GetCapturedStderr().find("session bus connection was lost"), std::string::npos);
}
