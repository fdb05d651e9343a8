#include "document/file_looker.h"

#include "tests/support/testing.h"

#include <semaphore>

TEST(FileLooker, LookNowReadsAgainAfterALookThatWasUnderWay) {
  std::binary_semaphore goOn(0);
  std::atomic<int64> reads{0};
  const auto read = [&](const std::string&, int64, std::atomic<int64>*) {
    const int64 number = ++reads;
    if (number == 1) goOn.acquire();
    TFileState state;
    state.size = number;
    return TFileLook{TFileKind::kRegular, state};
  };
  TFileLooker looker(BMessenger(), {.read = read});
  ASSERT_TRUE(looker.Start("a"));
  const std::jthread disk([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50)); // most likely LookNow waits by now
    goOn.release();
  });
  const TFileLook look = looker.LookNow("a");
  ASSERT_TRUE(look.state);
  EXPECT_EQ(look.state->size, 2);
}

TEST(FileLooker, WaitsAsLongAsASlowDiskGoesOnDelivering) {
  constexpr std::chrono::milliseconds kPatience{500};
  const auto read = [kPatience](const std::string&, int64, std::atomic<int64>* progress) {
    const auto end = std::chrono::steady_clock::now() + 3 * kPatience;
    for (; std::chrono::steady_clock::now() < end; ++*progress)
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    return TFileLook{TFileKind::kRegular, {}};
  };
  TFileLooker looker(BMessenger(), {.read = read, .patience = kPatience});
  EXPECT_EQ(looker.LookNow("a").kind, TFileKind::kRegular);
}
