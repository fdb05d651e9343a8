/** Other players on the bus as the source of the song: good ones, liars, silent ones, and those that leave. */

#include "platform/app/looper.h"
#include "player/app/other_transport.h"
#include "player/bus/bus.h"
#include "player/model/bus_messages.h"
#include "tests/player/app/recorder.h"
#include "tests/player/bus/fake_player.h"
#include "tests/player/bus/private_bus.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"

namespace {

using testing::_;
using testing::ElementsAre;

/** Receives the reports of the bus instead of the application. */
struct Listener : BLooper {
  void MessageReceived(BMessage* message) override {
    if (message->what == kMsgBusPlayers) fPlayers = *message;
    if (message->what == kMsgBusOtherIs) fOther = *message;
    ++fNews;
  }
  BMessage fPlayers;
  BMessage fOther;
  int fNews = 0;
};

struct OtherPlayers : testing::Test {
  template <typename Condition>
  bool Wait(const Condition& condition) {
    return eventually([&] {
      while (!condition())
        if (!fListener->DeliverNext()) return false;
      return true;
    });
  }
  bool Knows(const std::string& id) const {
    std::string found;
    for (int32 i = 0; fListener->fPlayers.FindString("id", i, &found) == B_OK; ++i)
      if (found == id) return true;
    return false;
  }
  std::string Text(const char* name) const { return field<std::string>(fListener->fOther, name).value_or(""); }
  bool IsReachable() const { return field<bool>(fListener->fPlayers, "reachable").value_or(false); }
  bool IsSilent() const { return field<bool>(fListener->fOther, "silent").value_or(false); }
  void Choose(const std::string& id) {
    ASSERT_TRUE(Wait([&] { return Knows(id); }));
    fBus->Choose(id);
    ASSERT_TRUE(Wait([&] { return Text("id") == id; }));
  }

  PrivateBus fDaemon;
  const OwnLooper<Listener> fListener{new Listener};
  std::unique_ptr<TBus> fBus = std::make_unique<TBus>(BMessenger(fListener.get()), [] { return 0; });
};

} // namespace

TEST_F(OtherPlayers, TheirSongIsReportedAndTheirPositionFollowed) {
  std::atomic<bigtime_t> startUs = system_time() - 5000000;
  FakePlayer player("fake", playing_song("file:///music/a%20song%E3%81%82.mp3"),
                    [&] { return (system_time() - startUs) / 250000 * 250000; });
  fBus->Start();
  Choose("fake");
  EXPECT_FALSE(Knows("fake.too")) << "its other name on the bus";
  EXPECT_EQ(Text("path"), "/music/a songあ.mp3");
  EXPECT_EQ(Text("title"), "A title");
  EXPECT_EQ(Text("artist"), "One, Two");
  EXPECT_TRUE(eventually([&] { return std::abs(fBus->PositionMs() - (system_time() - startUs) / 1000) < 40; }));

  startUs -= 30000000;
  player.SignalSeeked(system_time() - startUs);
  EXPECT_TRUE(eventually([&] { return std::abs(fBus->PositionMs() - (system_time() - startUs) / 1000) < 40; }));
  player.Change({{"PlaybackStatus", "Paused"}, {"Metadata", QVariantMap{{"xesam:title", 5}, {"mpris:length", "x"}}}});
  EXPECT_TRUE(Wait([&] { return Text("title") == "5"; }));
  EXPECT_EQ(Text("path"), "") << "values of a wrong type are ignored";
}

TEST_F(OtherPlayers, ThePositionOfAPausedSongIsKnownWhenItIsReported) {
  QVariantMap song = playing_song("file:///a.mp3");
  song["PlaybackStatus"] = "Paused";
  std::atomic<qlonglong> positionUs = 7000000;
  FakePlayer player("fake", song, [&] { return positionUs.load(); });
  fBus->Start();
  Choose("fake");
  EXPECT_EQ(fBus->PositionMs(), 7000);
  const int newsBefore = fListener->fNews;
  positionUs = 9000000;
  player.SignalSeeked(positionUs);
  EXPECT_TRUE(Wait([&] { return fListener->fNews > newsBefore; }));
  EXPECT_EQ(fBus->PositionMs(), 9000);
  positionUs = 8000000;
  fBus->SeekTo(8000);
  EXPECT_EQ(fBus->PositionMs(), 8000) << "at once, for the next time tag";
}

TEST_F(OtherPlayers, ATitleOfMegabytesIsTruncatedAtACharacter) {
  const QString longText(1000000, u'語');
  QVariantMap song = playing_song("file:///a.mp3");
  song["Metadata"] = QVariantMap{{"xesam:title", longText}, {"xesam:artist", QStringList{longText}}};
  const FakePlayer player("fake", song, {});
  fBus->Start();
  Choose("fake");
  for (const char* name : {"title", "artist"}) EXPECT_EQ(Text(name), longText.left(341).toStdString()) << name;
}

TEST_F(OtherPlayers, CommandsReachThemAsFarAsTheySupportThem) {
  QVariantMap song = playing_song("file:///a.mp3");
  FakePlayer player("fake", song, [] { return 3000000; });
  fBus->Start();
  Choose("fake");
  TRecorder events;
  TOtherTransport transport(fBus.get(), &events, {"fake", "Fake"});
  transport.TakeReport(fListener->fOther);
  EXPECT_EQ(transport.Song().artist, "One, Two");
  transport.PlayPause();
  transport.Seek(7000);
  transport.SetSpeed(50);
  transport.SetVolume(30);
  transport.Skip(1);
  transport.SetSpeed(1000);
  transport.SetVolume(-5);
  transport.PlayPart({2000, 3000});
  transport.EndPart();
  transport.EndPart();
  transport.PlayPart({5000, {}});
  transport.EndPart(); // to the end of the song: there is none
  transport.PlayPart({5000, 4000});
  const auto receives = [&](size_t count) { return eventually([&] { return player.Received().size() >= count; }); };
  EXPECT_TRUE(receives(13));
  EXPECT_THAT(player.Received(),
              ElementsAre("Pause", "SetPosition /track/1 7000000", "Set org.mpris.MediaPlayer2.Player Rate 0.5",
                          "Set org.mpris.MediaPlayer2.Player Volume 0.3", "Next",
                          "Set org.mpris.MediaPlayer2.Player Rate 2", "Set org.mpris.MediaPlayer2.Player Volume 0",
                          "SetPosition /track/1 2000000", "Play", "Pause", "SetPosition /track/1 2000000",
                          "SetPosition /track/1 5000000", "Play"));
  EXPECT_THAT(events.shownMs, ElementsAre(_, 7000, 2000, 2000, 5000));
  player.Change({{"CanSeek", false}, {"CanPlay", false}, {"PlaybackStatus", "Paused"}});
  EXPECT_TRUE(Wait([&] { return field<int32>(fListener->fOther, "state") == 2; }));
  fBus->SeekTo(8000);
  fBus->SetPaused(false);
  fBus->Skip(-1);
  EXPECT_TRUE(receives(14));
  EXPECT_EQ(player.Received()[13], "Previous") << "unsupported commands are not sent";
}

TEST_F(OtherPlayers, OneThatDoesNotAnswerIsReportedAndBlocksNothing) {
  FakePlayer player("fake", playing_song("file:///a.mp3"), system_time);
  fBus->Start();
  Choose("fake");
  player.FallSilent();
  EXPECT_TRUE(Wait([&] { return fBus->PositionMs() >= 0 && IsSilent(); }));
  const int32 standsAtMs = fBus->PositionMs();
  snooze(50000);
  EXPECT_EQ(fBus->PositionMs(), standsAtMs) << "its position is unknown";
  player.Speak();
  EXPECT_TRUE(Wait([&] { return fBus->PositionMs() >= 0 && !IsSilent(); }));
}

TEST_F(OtherPlayers, PlayersAreListedAsTheyComeAndGoAndASecondInstanceHasItsOwnName) {
  fBus->Start();
  EXPECT_TRUE(Wait([&] { return IsReachable(); }));
  {
    FakePlayer late("late.instance1", {}, {});
    EXPECT_TRUE(Wait([&] { return Knows("late.instance1"); }));
    TBus second(BMessenger(fListener.get()), [] { return 0; });
    second.Start();
    const std::string secondId = "sonivo.instance" + std::to_string(getpid());
    EXPECT_TRUE(Wait([&] { return Knows(secondId); }));
    fBus->Choose("late.instance1");
  }
  EXPECT_TRUE(Wait([&] { return !Knows("late.instance1"); }));
  fBus->PositionMs();
  fBus->SetPaused(true);
}

TEST_F(OtherPlayers, ABusThatStartsAfterThePlayerIsFound) {
  fDaemon.End();
  fBus->Start();
  EXPECT_TRUE(Wait([&] { return fListener->fNews > 0; }));
  EXPECT_FALSE(IsReachable());
  fDaemon.Start();
  {
    FakePlayer late("late", {}, {});
    EXPECT_TRUE(Wait([&] { return Knows("late"); }));
  }
  fDaemon.End();
  EXPECT_TRUE(Wait([&] { return !IsReachable(); })) << "reported, though an earlier attempt had failed";
}

TEST_F(OtherPlayers, ALostOrMissingBusIsReported) {
  testing::internal::CaptureStderr();
  fBus->Start();
  EXPECT_TRUE(Wait([&] { return IsReachable(); }));
  fDaemon.End();
  EXPECT_TRUE(Wait([&] { return !IsReachable(); }));
  fBus->Choose("fake");
  EXPECT_EQ(fBus->PositionMs(), 0);
  fBus->SeekTo(1);
  fBus.reset();

  unsetenv("DBUS_SESSION_BUS_ADDRESS");
  fListener->fNews = 0;
  TBus nowhere(BMessenger(fListener.get()), [] { return 0; });
  nowhere.Start();
  EXPECT_TRUE(Wait([&] { return fListener->fNews > 0; }));
  EXPECT_FALSE(IsReachable());
  EXPECT_NE(testing::internal::GetCapturedStderr().find("session bus connection was lost"), std::string::npos);
}
