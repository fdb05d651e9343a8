#include "common/thread.h"

#include "tests/support/testing.h"

namespace {

/** Counts rounds until terminated; signals its first round and its destructor. */
struct Counter : koreva::TThread {
  Counter() : TThread("counting", B_NORMAL_PRIORITY) {}
  ~Counter() override { fGone.set_value(); }

  std::atomic<int> fRounds{0};
  std::promise<void> fFirstRound;
  std::promise<void> fGone;

private:
  int32 Execute() override {
    while (!IsTerminated()) {
      if (++fRounds == 1) fFirstRound.set_value();
      snooze(100);
    }
    return B_OK;
  }
};

} // namespace

TEST(Thread, RunsOnlyWhileItIsResumedAndEndsWhenToldAlsoSuspended) {
  Counter counter;
  EXPECT_TRUE(counter.IsSuspended());
  counter.Wait(); // never started: no wait
  EXPECT_EQ(counter.fRounds, 0);
  ASSERT_EQ(counter.Resume(), B_OK);
  EXPECT_FALSE(counter.IsSuspended());
  counter.fFirstRound.get_future().wait();
  counter.SetName("counting on");
  EXPECT_GT(find_thread("counting on"), 0);
  counter.Suspend();
  EXPECT_TRUE(counter.IsSuspended());
  const int rounds = counter.fRounds;
  snooze(20000);
  EXPECT_LE(counter.fRounds, rounds + 1); // the round in progress
  ASSERT_EQ(counter.Resume(), B_OK);
  while (counter.fRounds <= rounds + 1) snooze(100);
  counter.Suspend();
  snooze(20000); // most likely it is held by now; the test holds either way
  counter.Terminate();
  counter.Wait();
  EXPECT_EQ(find_thread("counting on"), B_NAME_NOT_FOUND);
}

TEST(Thread, DeletesItselfWhenAskedToAlsoAfterAnException) {
  struct Thrower : Counter {
    int32 Execute() override { throw std::runtime_error("meant"); }
  };
  for (Counter* const counter : {new Counter, static_cast<Counter*>(new Thrower)}) {
    std::future<void> gone = counter->fGone.get_future();
    counter->SetAutoDelete(true);
    counter->Terminate();
    ASSERT_EQ(counter->Resume(), B_OK);
    EXPECT_EQ(gone.wait_for(std::chrono::seconds(30)), std::future_status::ready);
  }
}
