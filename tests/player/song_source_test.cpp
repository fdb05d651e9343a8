#include "player/song_source.h"

#include "platform/kernel/threads.h"
#include "tests/player/wav.h"
#include "tests/scratch_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>

namespace {

class Listener : public TSongEvents {
public:
  void SongLoaded(int64 load, const TSongTags& tags) override {
    const std::lock_guard lock(fMutex);
    fLoaded = load;
    fTags = tags;
    fChanged.notify_all();
  }
  void SongEnded(int64 load) override {
    const std::lock_guard lock(fMutex);
    fEnded = load;
    fChanged.notify_all();
  }
  void SongFailed(int64 load, const std::string& reason) override {
    const std::lock_guard lock(fMutex);
    fFailed = load;
    fReason = reason;
    fChanged.notify_all();
  }
  bool Wait(const int64& which, int64 load) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return which == load; });
  }
  int64 fLoaded = 0;
  int64 fEnded = 0;
  int64 fFailed = 0;
  std::string fReason;
  TSongTags fTags;

private:
  std::mutex fMutex;
  std::condition_variable fChanged;
};

} // namespace

TEST(SongSource, PlaysInRealTimeWithoutASoundCard) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  EXPECT_EQ(source->PositionMs(), 0);
  const int64 load = source->Load(folder.Write("a.wav", silent_wav()), false);
  ASSERT_TRUE(listener.Wait(listener.fLoaded, load));
  EXPECT_EQ(listener.fTags.durationMs, 500);
  ASSERT_TRUE(listener.Wait(listener.fEnded, load));
}

TEST(SongSource, PausedStaysWhereItWasSoughtTo) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  const int64 load = source->Load(folder.Write("a.wav", silent_wav()), true);
  ASSERT_TRUE(listener.Wait(listener.fLoaded, load));
  source->SeekTo(250);
  EXPECT_EQ(source->PositionMs(), 250);
  snooze(150000);
  EXPECT_NEAR(source->PositionMs(), 250, 30);
}

TEST(SongSource, PositionOfAPausedSongIsAskedAnewOnceItMoves) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  const int64 load = source->Load(folder.Write("a.wav", silent_wav(20)), true);
  ASSERT_TRUE(listener.Wait(listener.fLoaded, load));
  for (int i = 0; i < 30; ++i) { // until the library is asked no more
    source->PositionMs();
    snooze(50000);
  }
  source->SeekTo(5000);
  EXPECT_EQ(source->PositionMs(), 5000);
  source->SetPaused(false);
  for (int i = 0; i < 1000 && source->PositionMs() <= 5000; ++i) snooze(10000);
  EXPECT_GT(source->PositionMs(), 5000);
}

TEST(SongSource, APartIsPlayedAgainUntilItIsLetGo) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  const int64 load = source->Load(folder.Write("a.wav", silent_wav(2)), true);
  ASSERT_TRUE(listener.Wait(listener.fLoaded, load));
  source->SetRepeat(500, 1000);
  source->SetPaused(false);
  int32 furthestMs = 0;
  int timesBack = 0;
  int32 beforeMs = 0;
  for (int i = 0; i < 5000 && timesBack < 2; ++i) {
    const int32 nowMs = source->PositionMs();
    if (nowMs < beforeMs - 100) ++timesBack;
    furthestMs = std::max(furthestMs, nowMs);
    beforeMs = nowMs;
    snooze(5000);
  }
  EXPECT_EQ(timesBack, 2);
  EXPECT_LE(furthestMs, 1010);
  source->SetRepeat(-1, -1);
  EXPECT_TRUE(listener.Wait(listener.fEnded, load)) << "it goes on to its end";
}

TEST(SongSource, TellsWhichSongCannotBePlayed) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  int64 load = source->Load(folder.File("missing.mp3"), false);
  ASSERT_TRUE(listener.Wait(listener.fFailed, load));
  EXPECT_FALSE(listener.fReason.empty());
  load = source->Load(folder.Write("text.mp3", "no sound in here"), false);
  ASSERT_TRUE(listener.Wait(listener.fFailed, load));
}

TEST(SongSource, NewsNameTheLoadTheyAreAbout) {
  const ScratchFolder folder;
  Listener listener;
  const auto source = make_mpv_source(&listener);
  const int64 bad = source->Load(folder.File("missing.mp3"), true);
  const int64 good = source->Load(folder.Write("a.wav", silent_wav()), true);
  ASSERT_TRUE(listener.Wait(listener.fLoaded, good));
  EXPECT_NE(listener.fFailed, good) << "the failure, if it was told, is the other song's";
  EXPECT_TRUE(listener.fFailed == bad || listener.fFailed == 0);
}
