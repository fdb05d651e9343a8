#include "platform/app/looper_lock.h"
#include "platform/app/message_filter.h"
#include "platform/app/message_runner.h"
#include "platform/app/nonblocking_thread.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"
#include "tests/support/waiter.h"

#include <pthread.h>

using testing::ElementsAre;

namespace {

/** Records what it receives; answers 'ping' with 'pong', drops 'drop', throws at 'thrw'. */
struct Recorder : BLooper {
  explicit Recorder(std::atomic<int>* alive = nullptr, int32 capacity = 100)
      : BLooper("recorder", B_NORMAL_PRIORITY, capacity), fAlive(alive) {
    if (fAlive) ++*fAlive;
  }
  ~Recorder() override {
    if (fAlive) --*fAlive;
  }
  void MessageReceived(BMessage* message) override {
    fReceived.push_back(message->what);
    if (message->what == 'ping') message->SendReply('pong');
    if (message->what == 'thrw') throw std::runtime_error("on purpose");
    BLooper::MessageReceived(message);
  }
  std::vector<uint32> fReceived;

private:
  std::atomic<int>* fAlive;
};

uint32 answer_to(uint32 what, const BMessenger& target) {
  return ask(target, BMessage(what)).what;
}

struct Skip : BMessageFilter {
  using BMessageFilter::BMessageFilter;
  filter_result Filter(BMessage*, BHandler**) override { return B_SKIP_MESSAGE; }
};

/** A looper with that capacity, whose messages are delivered by the test unless it runs. */
template <int32 capacity>
struct LooperByHand : testing::Test {
  OwnLooper<Recorder> fLooper{new Recorder(nullptr, capacity)};
  const BMessenger fMessenger{fLooper.get()};
};
using Looper = LooperByHand<100>;
using FullLooper = LooperByHand<1>;

} // namespace

TEST_F(Looper, QuestionsAreAnsweredOrReleased) {
  fLooper->Run();
  EXPECT_EQ(fLooper->Run(), fLooper->Thread()) << "once";
  EXPECT_EQ(answer_to('ping', fMessenger), uint32{'pong'});
  EXPECT_EQ(answer_to('drop', fMessenger), B_NO_REPLY_CODE);
  EXPECT_EQ(answer_to('thrw', fMessenger), B_NO_REPLY_CODE) << "a handler that throws ends nothing";
  EXPECT_EQ(answer_to('ping', fMessenger), uint32{'pong'});
  BMessage script('scri');
  script.AddSpecifier("Nothing");
  EXPECT_EQ(ask(fMessenger, script).what, B_MESSAGE_NOT_UNDERSTOOD);
  fLooper.reset();
  const BMessage question('ping');
  BMessage answer;
  EXPECT_EQ(question.SendReply('pong'), B_NO_REPLY) << "nobody has asked";
  EXPECT_EQ(fMessenger.SendMessage(&question, &answer), B_BAD_PORT_ID);
  EXPECT_EQ(BPendingReply().Wait(&answer, 0), B_NO_INIT);
  EXPECT_FALSE(fMessenger.IsValid() || fMessenger.Target(nullptr) || fMessenger.LockTarget());
}

TEST_F(Looper, AskerIsWokenByTheAnswerAndWhenTheTargetGoesWithTheQuestionInItsQueue) {
  const BMessage question('ping');
  BMessage late('mine');
  EXPECT_EQ(fMessenger.SendMessage(&question, &late, B_INFINITE_TIMEOUT, 1000), B_TIMED_OUT);
  fLooper->DeliverAll();
  EXPECT_EQ(late.what, uint32{'mine'}) << "an answer after the time-out is ignored";
  for (const uint32 answer : {uint32{'pong'}, uint32{B_NO_REPLY_CODE}}) {
    expect_woken([=, this] { EXPECT_EQ(answer_to('ping', fMessenger), answer); },
                 [=, this] {
                   while (fLooper->CountMessages() == 0) std::this_thread::yield();
                   if (answer == 'pong')
                     fLooper->DeliverNext();
                   else
                     fLooper.reset();
                 });
  }
}

TEST_F(FullLooper, SenderAsleepIsWokenByRoomAndByTheEnd) {
  EXPECT_EQ(fLooper->PostMessage('full'), B_OK);
  EXPECT_EQ(fLooper->PostMessage('more'), B_WOULD_BLOCK);
  expect_woken([this] { EXPECT_EQ(fMessenger.SendMessage('some'), B_OK); }, [this] { fLooper->DeliverNext(); });
  expect_woken([this] { EXPECT_EQ(fMessenger.SendMessage('late'), B_BAD_PORT_ID); }, [this] { fLooper.reset(); });
}

TEST_F(Looper, ThreadAsleepBeforeItsLockIsWokenByTheLastUnlockAndByTheEnd) {
  ASSERT_TRUE(fLooper->Lock() && fLooper->Lock());
  {
    const Waiter locker([this] { EXPECT_EQ(TLooperLock(fMessenger).Looper(), fLooper.get()); });
    ASSERT_TRUE(locker.Sleeps());
    fLooper->Unlock();
    EXPECT_TRUE(locker.Sleeps()) << "it is still locked once";
    fLooper->Unlock();
    EXPECT_TRUE(locker.IsWoken());
  }
  ASSERT_TRUE(fLooper->Lock()) << "the scope has unlocked it";
  expect_woken([this] { EXPECT_FALSE(TLooperLock(fMessenger)); }, [this] { fLooper.release()->Quit(); });
}

TEST(LooperThatQuits, IsNoValidTargetWhileItsHandlerStillRuns) {
  static std::atomic<bool> isValid{true};
  struct Quitter : BLooper {
    void MessageReceived(BMessage*) override {
      Quit();
      isValid = BMessenger(this).IsValid();
    }
  };
  auto* const looper = new Quitter;
  const thread_id thread = looper->Run();
  looper->PostMessage('quit');
  wait_for_thread(thread, nullptr);
  EXPECT_FALSE(isValid);
}

TEST(LooperThatQuits, DeliversNothingNotEvenTheMessageItHasDequeued) {
  std::atomic<int> alive{0};
  OwnLooper<Recorder> asker(new Recorder);
  auto* const looper = new Recorder(&alive);
  looper->Run();
  ASSERT_TRUE(looper->Lock());
  const BMessage quit(B_QUIT_REQUESTED);
  ASSERT_EQ(BMessenger(looper).SendMessage(&quit, asker.get()), B_OK);
  while (looper->CountMessages() > 0) std::this_thread::yield(); // its thread has dequeued it and waits for the lock
  ASSERT_EQ(BMessenger(looper).SendMessage(&quit, asker.get()), B_OK);
  looper->Quit();
  EXPECT_EQ(alive, 0);
  asker->DeliverAll();
  EXPECT_THAT(asker->fReceived, ElementsAre(uint32{B_REPLY}, uint32{B_REPLY})) << "it has agreed to both";
}

TEST(LooperThatQuits, AnswersWhetherItAgrees) {
  struct Stubborn : BLooper {
    bool QuitRequested() override { return false; }
  };
  const OwnLooper<Stubborn> looper(new Stubborn);
  looper->Run();
  EXPECT_EQ(field<bool>(ask(BMessenger(looper.get()), BMessage(B_QUIT_REQUESTED)), "result"), false);
}

TEST(LooperThatQuits, IsDeletedAlsoIfItsThreadCouldNotStart) {
  pthread_attr_t usual;
  pthread_attr_t huge;
  pthread_getattr_default_np(&usual);
  pthread_getattr_default_np(&huge);
  pthread_attr_setstacksize(&huge, size_t{1} << 47); // more than there are addresses
  std::atomic<int> alive{0};
  auto* const looper = new Recorder(&alive);
  pthread_setattr_default_np(&huge);
  EXPECT_LT(looper->Run(), 0);
  pthread_setattr_default_np(&usual);
  EXPECT_TRUE(looper->Lock());
  looper->Quit();
  EXPECT_EQ(alive, 0);
}

TEST(LooperThatQuits, EndsFromBothSidesAThousandTimes) {
  std::atomic<int> alive{0};
  for (int i = 0; i < 1000; ++i) {
    auto* const looper = new Recorder(&alive);
    const BMessenger messenger(looper);
    looper->Run();
    messenger.SendMessage('some');
    if (i % 2 == 0) {
      EndLooper()(looper);
      EXPECT_FALSE(messenger.IsValid());
    } else {
      messenger.SendMessage(B_QUIT_REQUESTED);
    }
  }
  while (alive > 0) std::this_thread::yield();
}

TEST(OwnFullQueue, IsNotWaitedForAndLosesNothing) {
  struct Poster : Recorder {
    Poster() : Recorder(nullptr, 2) {}
    void MessageReceived(BMessage* message) override {
      for (uint32 i = 0; message->what == 'many' && i < 50; ++i) EXPECT_EQ(BMessenger(this).SendMessage(i), B_OK);
      Recorder::MessageReceived(message);
    }
  };
  OwnLooper<Poster> looper(new Poster);
  const BMessenger messenger(looper.get());
  looper->Run();
  messenger.SendMessage('many');
  for (int i = 0; i < 2; ++i) EXPECT_EQ(answer_to('ping', messenger), uint32{'pong'}) << "the first may overtake them";
  ASSERT_TRUE(looper->Lock());
  EXPECT_EQ(looper->fReceived.size(), 53U) << "nothing is lost";
  for (uint32 i = 0; i < 50; ++i)
    EXPECT_EQ(messenger.SendMessage(i), B_OK) << "nor does the thread block that has it locked";
  looper->Unlock();
}

TEST_F(FullLooper, EverySenderThatWaitsForRoomGetsIt) {
  fLooper->Run();
  std::vector<std::jthread> senders;
  for (int i = 0; i < 8; ++i)
    senders.emplace_back([this] {
      for (int k = 0; k < 2000; ++k) fMessenger.SendMessage('some');
    });
  senders.clear();
  EXPECT_EQ(answer_to('ping', fMessenger), uint32{'pong'});
  EXPECT_EQ(fLooper->fReceived.size(), 16001U);
}

TEST_F(FullLooper, CoalescedNoticeIsQueuedOnceEvenInAFullQueue) {
  fMessenger.SendMessage('full');
  for (int i = 0; i < 100; ++i) EXPECT_EQ(fMessenger.SendCoalesced('move'), B_OK);
  EXPECT_EQ(fMessenger.SendCoalesced('size'), B_OK);
  fLooper->DeliverAll();
  fMessenger.SendCoalesced('move'); // the first has been delivered
  fLooper->DeliverAll();
  EXPECT_THAT(fLooper->fReceived, ElementsAre('full', 'move', 'size', 'move'));
  BHandler handlers[2];
  for (BHandler& handler : handlers) {
    fLooper->AddHandler(&handler);
    BMessenger(&handler).SendCoalesced('move');
  }
  EXPECT_EQ(fLooper->CountMessages(), 2) << "each handler gets its own";
  EXPECT_EQ(BMessenger(&handlers[1]).Target(nullptr), &handlers[1]);
  EXPECT_TRUE(fLooper->RemoveHandler(&handlers[1]));
  EXPECT_EQ(BMessenger(&handlers[1]).SendCoalesced('move'), B_BAD_PORT_ID);
}

TEST_F(FullLooper, NonblockingThreadNeverWaitsForIt) {
  BMessage answer;
  const BMessage question('ping');
  ASSERT_TRUE(fLooper->Lock());
  std::jthread([&] {
    {
      const NonblockingThread here;
      EXPECT_EQ(fMessenger.SendMessage(&question, &answer), B_TIMED_OUT) << "it is queued";
      EXPECT_EQ(fMessenger.SendMessage('some'), B_WOULD_BLOCK);
      EXPECT_EQ(fMessenger.SendMessage(&question, &answer), B_WOULD_BLOCK);
      EXPECT_FALSE(fMessenger.LockTarget());
      EXPECT_FALSE(fLooper->Lock());
    }
    EXPECT_EQ(fMessenger.SendMessage(&question, BMessenger(), 1000), B_TIMED_OUT) << "it waits again";
  }).join();
  fLooper->Unlock();
}

TEST_F(Looper, FiltersSeeAMessageFirst) {
  auto* const filter = new Skip('skip');
  fLooper->AddCommonFilter(filter);
  fLooper->AddCommonFilter(new Skip('none'));
  EXPECT_EQ(filter->Looper(), fLooper.get());
  for (const uint32 code : {'skip', 'some', 'more'}) fLooper->PostMessage(code);
  fLooper->DeliverAll();
  EXPECT_THAT(fLooper->fReceived, ElementsAre('some', 'more'));
  EXPECT_TRUE(fLooper->RemoveCommonFilter(filter));
  EXPECT_FALSE(fLooper->RemoveCommonFilter(filter) || filter->Looper());
  delete filter;
  const OwnLooper<BLooper> other(new BLooper("other"));
  EXPECT_EQ(fLooper->PostMessage('skip', other.get()), B_BAD_HANDLER);
  fLooper->PostMessage('skip');
  fLooper->DeliverAll();
  EXPECT_THAT(fLooper->fReceived, ElementsAre('some', 'more', 'skip'));
}

/** Runners to a looper, and a clock that ticks beside them. */
struct MessageRunner : Looper {
  void WaitFiveTicks() {
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(eventually([this] { return fClock->DeliverNext(); }));
  }
  const BMessage fBeat{'beat'};
  OwnLooper<Recorder> fClock{new Recorder};
  const BMessageRunner fTicks{BMessenger(fClock.get()), &fBeat, 1000};
};

TEST_F(MessageRunner, BeatsUntilItIsDestroyedAndNeverPilesUp) {
  {
    const BMessageRunner runner(fMessenger, &fBeat, 1000);
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(eventually([&] { return fLooper->CountMessages() == 1; }));
      WaitFiveTicks();
      EXPECT_EQ(fLooper->CountMessages(), 1) << "a beat is skipped while the previous one is queued";
      fLooper->DeliverAll();
    }
  }
  fLooper->DeliverAll();
  WaitFiveTicks();
  EXPECT_EQ(fLooper->CountMessages(), 0);
}

TEST_F(MessageRunner, SendsNothingOnceItIsDestroyed) {
  OwnLooper<Recorder> first(new Recorder), last(new Recorder);
  const BMessage large = message_of('beat', "text", std::string(1 << 20, 'x'));
  for (int i = 0; i < 100; ++i) {
    const BMessageRunner before(BMessenger(first.get()), &fBeat, 1000, 1);
    std::optional<BMessageRunner> runner(std::in_place, fMessenger, &large, 1000, 1);
    while (!first->DeliverNext()) continue; // the next beat is being posted
    runner.reset();
    const int32 sent = fLooper->CountMessages();
    const BMessageRunner after(BMessenger(last.get()), &fBeat, 1000, 1);
    while (!last->DeliverNext()) std::this_thread::yield();
    ASSERT_EQ(fLooper->CountMessages(), sent);
    fLooper->DeliverAll();
  }
}

TEST(MessageRunnerAlone, BeatsSoonWhenItsIntervalBecomesShort) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessage beat('beat');
  BMessageRunner runner(BMessenger(looper.get()), &beat, B_INFINITE_TIMEOUT);
  ASSERT_TRUE(eventually([] { return is_asleep(thread_named("message runner")); }));
  runner.SetInterval(1000);
  EXPECT_TRUE(eventually([&] { return looper->CountMessages() == 1; }));
  const BMessageRunner second(BMessenger(looper.get()), &beat, 1000);
  EXPECT_TRUE(eventually([&] { return looper->CountMessages() == 2; }));
}

TEST_F(MessageRunner, SendsNoMoreThanItsCountAndAHugeIntervalDoesNotOverflow) {
  const BMessage never('nevr');
  BMessageRunner huge(fMessenger, &never, INT64_MAX);
  huge.SetInterval(INT64_MAX);
  const BMessageRunner twice(fMessenger, &fBeat, 0, 2);
  EXPECT_TRUE(eventually([&] {
    fLooper->DeliverAll();
    return fLooper->fReceived.size() >= 2;
  }));
  WaitFiveTicks();
  fLooper->DeliverAll();
  EXPECT_THAT(fLooper->fReceived, ElementsAre('beat', 'beat'));
}
