#include "player/model/steady_play.h"

#include "platform/app/message.h"
#include "platform/kernel/threads.h"
#include "player/frontend/front_end_host.h"
#include "player/sound/now_playing.h"
#include "plugin/message_codes.h"
#include "tests/player/sound/still_source.h"
#include "tests/support/messages.h"

#include <gtest/gtest.h>

namespace {

constexpr bigtime_t kMs = 1000;
constexpr bigtime_t kBegin = 100'000 * kMs;

/** At kBegin + `atMs`. */
TReadPosition read(int32 atMs, int32 positionMs, int32 speedPercent = 100, bool isPlaying = true) {
  return {kBegin + atMs * kMs, positionMs * kMs, speedPercent, isPlaying};
}

/** A song that has played since the clock was 0. */
struct TMovingSound : TSongControl {
  void SetPaused(bool) override {}
  void SeekTo(int32) override {}
  void SetSpeed(double) override {}
  void SetVolume(double) override {}
  int32 PositionMs() override { return static_cast<int32>((system_time() - fBeganUs) / kMs); }
  const bigtime_t fBeganUs = system_time();
};

int32 position_in(const BMessage& answer) {
  const void* record = nullptr;
  ssize_t size = 0;
  if (answer.FindData("Info", B_STRING_TYPE, &record, &size) != B_OK) return -1;
  return static_cast<const TInfoRecord*>(record)->positionMs;
}

} // namespace

TEST(SteadyPlay, AnEarlierPositionIsKnownWhileTheSongPlaysWithoutInterruption) {
  constexpr int64 kFarthest = INT64_MAX;
  const struct {
    const char* what;
    std::vector<TReadPosition> reads;
    bigtime_t whenUs;
    std::optional<int32> positionMs;
  } cases[] = {
      {"plays", {read(0, 5000), read(300, 5303), read(600, 5600)}, kBegin + 450 * kMs, 5450},
      {"three quarters of the speed", {read(0, 5000, 75), read(400, 5300, 75)}, kBegin + 202 * kMs, 5152}, // 5151.5
      {"begun meanwhile", {read(0, 0), read(10, 10)}, kBegin, 0},
      {"never below 0", {read(0, 2), read(20, 4)}, kBegin, 0},
      {"not asked before", {read(400, 5300)}, kBegin + 200 * kMs, {}},
      {"the clock of the sound drifts", {read(0, 0), read(1100, 1112), read(2200, 2224)}, kBegin + 100 * kMs, 124},
      {"paused", {read(0, 5000), read(100, 5050, 100, false)}, kBegin + 50 * kMs, {}},
      {"resumed since", {read(0, 5000, 100, false), read(400, 5300)}, kBegin + 200 * kMs, {}},
      {"paused and resumed since", {read(0, 5000), read(400, 5370)}, kBegin + 200 * kMs, {}},
      {"sought since", {read(0, 5000), read(400, 8000)}, kBegin + 200 * kMs, {}},
      {"sought before", {read(0, 1000), read(100, 5000), read(400, 5300)}, kBegin + 200 * kMs, 5100},
      {"the sound stands still", {read(0, 9), read(15, 9), read(30, 9), read(45, 9)}, kBegin + 10 * kMs, {}},
      {"other speed since", {read(0, 5000, 75), read(10, 5008, 100)}, kBegin + 5 * kMs, {}},
      {"the future", {read(0, 5000), read(400, 5400)}, kBegin + 401 * kMs, {}},
      {"the farthest future", {read(0, 5000), read(400, 5400)}, kFarthest, {}},
      {"the farthest past", {read(0, 5000), read(400, 5400)}, -kFarthest - 1, {}},
      {"too long ago", {read(0, 5000), read(5001, 10001)}, kBegin, {}},
      {"just not too long ago", {read(0, 5000), read(5001, 10001)}, kBegin + kMs, 5001},
  };
  for (const auto& each : cases) {
    TSteadyPlay play;
    for (const TReadPosition& position : each.reads) play.Add(position);
    EXPECT_EQ(play.PositionMsAt(each.whenUs), each.positionMs) << each.what;
  }
}

TEST(SteadyPlay, SoonAfterAPositionTheNextIsKnownOnceTheSongIsSeenToPlay) {
  const std::vector<TReadPosition> steady = {read(0, 5000), read(100, 5100), read(150, 5150)};
  const struct {
    const char* what;
    std::vector<TReadPosition> reads;
    int32 atMs;
    std::optional<int32> positionMs;
  } cases[] = {
      {"plays", steady, 190, 5190},
      {"the last moment", steady, 240, 5240},
      {"too late", steady, 241, {}},
      {"before the last position", steady, 149, {}},
      {"three quarters of the speed", {read(0, 5000, 75), read(200, 5150, 75)}, 240, 5180},
      {"not seen for long enough", {read(0, 5000), read(149, 5149)}, 160, {}},
      {"sought", {read(0, 5000), read(200, 5200), read(250, 8000)}, 260, {}},
      {"stands still after a seek", {read(0, 9), read(90, 9), read(180, 60)}, 200, {}},
      {"paused", {read(0, 5000), read(200, 5200), read(220, 5220, 100, false)}, 230, {}},
  };
  for (const auto& each : cases) {
    TSteadyPlay play;
    for (const TReadPosition& position : each.reads) play.Add(position);
    EXPECT_EQ(play.PositionMsSoon(kBegin + each.atMs * kMs), each.positionMs) << each.what;
  }
}

TEST(SteadyPlay, TheHostAnswersForTheTimeOfAKeyAndRepeatsIt) {
  TMovingSound sound;
  TNowPlaying nowPlaying(&sound);
  nowPlaying.Set(TInfoRecord::kPlaying, 60000, "song");
  auto* const host = new TFrontEndHost(&nowPlaying);
  host->Run();
  const BMessenger target(host);
  const auto asked = [&](std::optional<int64> whenUs) {
    BMessage request(kMsgHostInformation);
    if (whenUs) request.AddInt64("When", *whenUs);
    return ask(target, request);
  };
  bool isAnswered = false;
  for (int tries = 0; tries < 100 && !isAnswered; ++tries) { // a busy machine makes the song look interrupted
    EXPECT_FALSE(asked({}).HasField("When"));
    const bigtime_t whenUs = system_time();
    while (system_time() < whenUs + 100 * kMs) asked({});
    const BMessage answer = asked(whenUs);
    isAnswered = field<int64>(answer, "When") == whenUs;
    EXPECT_TRUE(!isAnswered || position_in(answer) <= sound.PositionMs() - 100);
  }
  EXPECT_TRUE(isAnswered);
  nowPlaying.Set(TInfoRecord::kPaused, 60000, "song");
  EXPECT_FALSE(asked(system_time()).HasField("When")) << "a paused song is where it is";
  if (host->Lock()) host->Quit();
}
