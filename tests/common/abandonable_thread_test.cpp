#include "common/abandonable_thread.h"

#include "tests/support/testing.h"

TEST(AbandonableThread, WorkThatHangsIsAbandonedAndGoesOnByItself) {
  std::promise<void> release;
  const auto ended = std::make_shared<std::promise<void>>();
  {
    TAbandonableThread thread(std::chrono::milliseconds(1));
    EXPECT_TRUE(thread.WaitForEnd()) << "nothing was started";
    ASSERT_TRUE(thread.Start("hangs", [until = release.get_future().share(), ended](auto*) {
      until.wait();
      ended->set_value();
    }));
    EXPECT_FALSE(thread.WaitForEnd());
    EXPECT_FALSE(thread.Start("next", [](auto*) { FAIL(); }));
  }
  release.set_value();
  ended->get_future().wait();
}

TEST(AbandonableThread, WorkThatEndsIsJoinedAndNothingOfItIsLeft) {
  TAbandonableThread thread(std::chrono::hours(1));
  const auto owned = std::make_shared<int>();
  for (int round = 1; round <= 2; ++round) {
    ASSERT_TRUE(thread.Start("fails", [owned](auto*) {
      ++*owned;
      throw std::runtime_error("logged");
    }));
    ASSERT_TRUE(thread.WaitForEnd());
    EXPECT_EQ(*owned, round);
    EXPECT_EQ(owned.use_count(), 1);
  }
}
