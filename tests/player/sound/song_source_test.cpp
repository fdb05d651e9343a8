#include "player/sound/song_source.h"

#include "tests/player/app/listener.h"
#include "tests/support/output_of.h"
#include "tests/support/sound_server.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

namespace {

struct SongSource : testing::Test {
  /** Returns when the song is loaded. */
  int64 LoadSilence(uint32 halves, bool paused) {
    const int64 load = fSource->Load(fFolder.Write("a.wav", silent_wav(halves)), paused);
    EXPECT_TRUE(fListener.Wait(fListener.fLoaded, load));
    return load;
  }
  const ScratchFolder fFolder;
  SongListener fListener;
  std::shared_ptr<TSongSource> fSource = make_mpv_source(&fListener);
};

} // namespace

TEST_F(SongSource, PlaysInRealTimeWithoutASoundCard) {
  EXPECT_EQ(fSource->PositionMs(), 0);
  const int64 load = LoadSilence(1, false);
  EXPECT_EQ(fListener.fTags.durationMs, 500);
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load));
  EXPECT_TRUE(fListener.fIsSilent);
}

TEST_F(SongSource, PlayedSilentlyForeverAfterARestartOfTheSoundServer) {
  SoundServer server;
  LoadSilence(40, false);
  EXPECT_FALSE(fListener.fIsSilent);
  server.Kill();
  EXPECT_TRUE(fListener.WaitForOutput(true));
  server.Start();
  EXPECT_TRUE(fListener.WaitForOutput(false)) << "while the song plays";
  server.Kill();
  EXPECT_TRUE(fListener.WaitForOutput(true));
  fSource->SetPaused(true);
  server.Start();
  LoadSilence(40, true);
  EXPECT_TRUE(fListener.WaitForOutput(false)) << "at the next song";
}

/** An unbounded wait would hang this test. */
TEST_F(SongSource, EndsWhileTheSoundServerHangs) {
  SoundServer server;
  LoadSilence(40, false);
  EXPECT_TRUE(eventually([this] { return fSource->PositionMs() > 0; }));
  EXPECT_FALSE(fSource->IsHanging());
  server.Freeze();
  fSource->SetPaused(true); // asks the server
  EXPECT_TRUE(eventually([this] { return fSource->PositionMs(), fSource->IsHanging(); }));
  fSource.reset();
}

TEST_F(SongSource, PausedStaysWhereItWasSoughtToUntilItMoves) {
  LoadSilence(20, true);
  fSource->SeekTo(250);
  EXPECT_EQ(fSource->PositionMs(), 250);
  for (int i = 0; i < 30; ++i) { // until the library is not polled any more
    snooze(50000);
    EXPECT_NEAR(fSource->PositionMs(), 250, 30);
  }
  fSource->SeekTo(5000);
  EXPECT_EQ(fSource->PositionMs(), 5000);
  fSource->SetPaused(false);
  for (int i = 0; i < 1000 && fSource->PositionMs() <= 5000; ++i) snooze(10000);
  EXPECT_GT(fSource->PositionMs(), 5000);
}

TEST_F(SongSource, IsWhereItWasSoughtToAtOnce) {
  LoadSilence(40, false);
  ASSERT_TRUE(eventually([this] { return fSource->PositionMs() > 0; }));
  for (const int32 positionMs : {15000, 3000}) {
    fSource->SeekTo(positionMs);
    EXPECT_EQ(fSource->PositionMs(), positionMs);
  }
}

TEST_F(SongSource, ARangeIsRepeatedUntilThatIsCancelled) {
  const int64 load = LoadSilence(2, true);
  fSource->SetRepeat(500, 1000);
  fSource->SetPaused(false);
  int32 furthestMs = 0;
  int timesBack = 0;
  int32 beforeMs = 0;
  for (int i = 0; i < 5000 && timesBack < 2; ++i) {
    const int32 nowMs = fSource->PositionMs();
    if (nowMs < beforeMs - 100) ++timesBack;
    furthestMs = std::max(furthestMs, nowMs);
    beforeMs = nowMs;
    snooze(5000);
  }
  EXPECT_EQ(timesBack, 2);
  EXPECT_LE(furthestMs, 1010);
  fSource->SetRepeat(-1, -1);
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load)) << "it goes on to its end";
}

TEST_F(SongSource, APartEndsWhereItIsToAndTheSongIsPausedAtItsBeginning) {
  const int64 load = LoadSilence(4, true);
  for (const TSongPart& part : {TSongPart{400, 700}, {1900, 2000}, {0, 100}}) {
    EXPECT_TRUE(fListener.Wait(fListener.fEndedPart, fSource->PlayPart(part)));
    for (int i = 0; i < 10; ++i) { // the rest of the song may be in the output buffer already
      snooze(50000);
      EXPECT_NEAR(fSource->PositionMs(), part.fromMs, 30);
    }
    EXPECT_NE(fListener.fEnded, load) << part.fromMs;
  }
  EXPECT_NE(fListener.fEnded, load) << "the end of a part is none of the song, also where both are the same";
  fSource->SetPaused(false);
  EXPECT_TRUE(eventually([this] { return fSource->PositionMs() > 1500; })) << "it plays on beyond the part";
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load));
}

TEST_F(SongSource, ALoopedPartLastsUntilTheUserSeeks) {
  const int64 load = LoadSilence(4, true);
  fSource->PlayPart({500, 700, true});
  int timesBack = 0;
  int32 beforeMs = 0;
  ASSERT_TRUE(eventually([&] {
    const int32 nowMs = fSource->PositionMs();
    timesBack += std::exchange(beforeMs, nowMs) > nowMs + 50;
    return timesBack == 3;
  }));
  fSource->SeekTo(600);
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load));
}

TEST_F(SongSource, WithClicksTheSongIsAsLongAndWhereItWas) {
  const int64 load = LoadSilence(4, true);
  fSource->SetClicks({100, 250, 1000});
  fSource->SeekTo(900);
  fSource->SetPaused(false);
  EXPECT_EQ(fSource->PositionMs(), 900);
  ASSERT_TRUE(eventually([this] { return fSource->PositionMs() > 1200; }));
  fSource->SetClicks({});
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load));
}

TEST_F(SongSource, TheSongThatFollowsBeginsByItself) {
  const int64 first = LoadSilence(2, false);
  fSource->Follow(fFolder.Write("no.wav", silent_wav(2)));
  const int64 second = fSource->Follow(fFolder.Write("b.wav", silent_wav(6)));
  int32 furthestMs = 0;
  EXPECT_TRUE(eventually([&] {
    const int32 nowMs = fSource->PositionMs();
    if (fListener.Joined() == second) return true;
    furthestMs = std::max(furthestMs, nowMs);
    return false;
  })) << "the one queued last";
  EXPECT_NEAR(furthestMs, 1000, 60) << "a position of the first song until its last sample is heard";
  EXPECT_NEAR(fListener.fEndedMs, 1000, 60);
  EXPECT_EQ(fListener.fEnded, first);
  EXPECT_TRUE(fListener.Wait(fListener.fLoaded, second));
  EXPECT_LT(fSource->PositionMs(), 1000) << "of the second song";
  fSource->Follow(fFolder.File("no.wav"));
  fSource->Follow({});
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, second));
  EXPECT_EQ(fListener.fJoined, second) << "nothing follows";
}

TEST_F(SongSource, WithFiltersTheSongPlaysOnAndAMissingDeviceIsReplaced) {
  SoundServer server;
  fSource->SetSound({TReplayGain::kAlbum, 40, true, {6, -3}, true, "pulse/none"});
  const int64 load = LoadSilence(4, false);
  EXPECT_TRUE(fListener.Wait(fListener.fLostDevice, std::string("pulse/none")));
  EXPECT_TRUE(fListener.WaitForOutput(false));
  fSource->SetSpeed(2);
  fSource->SetSound({});
  EXPECT_TRUE(fListener.Wait(fListener.fEnded, load));
}

TEST_F(SongSource, ADeviceThatCameBackWasUsedFromTheNextSongOnOnly) {
  SoundServer server;
  fSource->SetSound({TReplayGain::kOff, 0, false, {}, true, "pulse/usb"});
  for (const bool isPaused : {false, true}) {
    fListener.fLostDevice = fListener.fReturnedDevice = {};
    server.Plug("usb");
    LoadSilence(120, false);
    ASSERT_TRUE(eventually([this] { return fSource->PositionMs() > 200; }));
    fSource->SetPaused(isPaused);
    server.Unplug();
    ASSERT_TRUE(fListener.Wait(fListener.fLostDevice, std::string("Null Output")));
    const int32 lostMs = fSource->PositionMs();
    const bigtime_t lostUs = system_time();
    EXPECT_EQ(server.Streams().find("\t0\t"), 1) << server.Streams();
    server.Plug("usb");
    ASSERT_TRUE(fListener.Wait(fListener.fReturnedDevice, std::string("Null Output")));
    EXPECT_TRUE(eventually([] { return SoundServer::Streams().find("\t0\t") == std::string::npos; }));
    const int32 returnedMs = fSource->PositionMs();
    const auto elapsedMs = static_cast<int32>((system_time() - lostUs) / 1000);
    EXPECT_GE(returnedMs, lostMs - 120) << "no part of the song is repeated";
    EXPECT_LE(returnedMs, lostMs + (isPaused ? 120 : elapsedMs + 120)) << "nor left out";
    fSource->SetPaused(false);
    EXPECT_TRUE(eventually([&] { return fSource->PositionMs() > returnedMs + 200; }));
    server.Unplug();
  }
}

TEST_F(SongSource, UsesTheChosenDeviceAgainAfterARestartOfTheSoundServer) {
  SoundServer server;
  fSource->SetSound({TReplayGain::kOff, 0, false, {}, true, "pulse/null"});
  LoadSilence(120, false);
  server.Kill();
  ASSERT_TRUE(fListener.Wait(fListener.fLostDevice, std::string("Null Output")));
  server.Start();
  EXPECT_TRUE(fListener.Wait(fListener.fReturnedDevice, std::string("Null Output")));
}

/** In a process of its own, whose linker finds something else under the library's name. */
TEST_F(SongSource, WithoutTheAudioLibraryEverySongFails) {
  constexpr const char* kIsWithout = "VESMO_TEST_WITHOUT_LIBRARY";
  if (std::getenv(kIsWithout) == nullptr) {
    fFolder.Write("libmpv.so.2", "no library");
    const std::string program = std::filesystem::read_symlink("/proc/self/exe").string();
    const std::string said =
        output_of(std::string(kIsWithout) + "=1 LD_LIBRARY_PATH=" + fFolder.Path() + " " + program +
                  " --gtest_filter=SongSource.WithoutTheAudioLibraryEverySongFails 2>&1");
    EXPECT_NE(said.find("[  PASSED  ] 1 test"), std::string::npos) << said;
    return;
  }
  for (int i = 0; i < 2; ++i) {
    const int64 load = fSource->Load("/a.wav", false);
    EXPECT_TRUE(fListener.Wait(fListener.fFailed, load));
  }
}
