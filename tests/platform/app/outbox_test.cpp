#include "platform/app/outbox.h"

#include "tests/support/testing.h"
#include "tests/support/waiter.h"

TEST(Outbox, AfterATimeOutDropsWhatIsQueuedForTheSameDestination) {
  std::promise<void> goesOn;
  std::atomic<bool> isSent{false};
  auto letter = std::make_shared<int>();
  const std::weak_ptr<int> queued = letter;
  const auto hang = [&] {
    goesOn.get_future().wait();
    return status_t{B_TIMED_OUT};
  };
  EXPECT_EQ(outbox::post("stopped", hang), B_OK);
  EXPECT_EQ(outbox::post("stopped", [&isSent, letter = std::move(letter)] { return isSent = true, status_t{B_OK}; }),
            B_OK);
  goesOn.set_value();
  EXPECT_TRUE(eventually([&] { return queued.expired(); }));
  EXPECT_FALSE(isSent);
}

TEST(Outbox, ADestinationIsServedAgainAfterItsIdleThreadHasEnded) {
  static std::atomic<int> sent{0}; // a letter that is never sent outlives the test
  for (const int letters : {1, 2}) {
    EXPECT_EQ(outbox::post("peer", [] { return ++sent, status_t{B_OK}; }), B_OK);
    EXPECT_TRUE(eventually([=] { return sent == letters; }));
    EXPECT_TRUE(eventually([] { return thread_named("outbox") == 0; }));
  }
}
