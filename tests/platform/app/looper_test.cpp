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

} // namespace

TEST(Looper, QuestionsAreAnsweredOrReleased) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessenger messenger(looper.get());
  looper->Run();
  EXPECT_EQ(answer_to('ping', messenger), uint32{'pong'});
  EXPECT_EQ(answer_to('drop', messenger), B_NO_REPLY_CODE);
  EXPECT_EQ(answer_to('thrw', messenger), B_NO_REPLY_CODE) << "a handler that throws ends nothing";
  EXPECT_EQ(answer_to('ping', messenger), uint32{'pong'});
  BMessage script('scri');
  script.AddSpecifier("Nothing");
  EXPECT_EQ(ask(messenger, script).what, B_MESSAGE_NOT_UNDERSTOOD);
  looper.reset();
  const BMessage question('ping');
  BMessage answer;
  EXPECT_EQ(messenger.SendMessage(&question, &answer), B_BAD_PORT_ID);
  EXPECT_FALSE(messenger.IsValid());
}

TEST(Looper, AskerIsWokenByTheAnswerAndWhenTheTargetGoesWithTheQuestionInItsQueue) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessenger messenger(looper.get());
  for (const uint32 answer : {uint32{'pong'}, uint32{B_NO_REPLY_CODE}}) {
    const Waiter asker([=] { EXPECT_EQ(answer_to('ping', messenger), answer); });
    while (looper->CountMessages() == 0) std::this_thread::yield();
    ASSERT_TRUE(asker.Sleeps());
    if (answer == 'pong')
      looper->DeliverNext();
    else
      looper.reset();
    EXPECT_TRUE(asker.IsWoken());
  }
}

TEST(Looper, SenderAsleepBeforeAFullQueueIsWokenByRoomAndByTheEnd) {
  OwnLooper<Recorder> looper(new Recorder(nullptr, 1));
  const BMessenger messenger(looper.get());
  EXPECT_EQ(looper->PostMessage('full'), B_OK);
  EXPECT_EQ(looper->PostMessage('more'), B_WOULD_BLOCK);
  {
    const Waiter sender([=] { EXPECT_EQ(messenger.SendMessage('some'), B_OK); });
    ASSERT_TRUE(sender.Sleeps());
    looper->DeliverNext();
    EXPECT_TRUE(sender.IsWoken());
  }
  const Waiter sender([=] { EXPECT_EQ(messenger.SendMessage('late'), B_BAD_PORT_ID); });
  ASSERT_TRUE(sender.Sleeps());
  looper.reset();
  EXPECT_TRUE(sender.IsWoken());
}

TEST(Looper, ThreadAsleepBeforeItsLockIsWokenByTheLastUnlockAndByTheEnd) {
  auto* const looper = new Recorder;
  const BMessenger messenger(looper);
  ASSERT_TRUE(looper->Lock() && looper->Lock());
  {
    const Waiter locker([=] { EXPECT_EQ(TLooperLock(messenger).Looper(), looper); });
    ASSERT_TRUE(locker.Sleeps());
    looper->Unlock();
    EXPECT_TRUE(locker.Sleeps()) << "it is still locked once";
    looper->Unlock();
    EXPECT_TRUE(locker.IsWoken());
  }
  ASSERT_TRUE(looper->Lock()) << "the scope has unlocked it";
  const Waiter locker([=] { EXPECT_FALSE(TLooperLock(messenger)); });
  ASSERT_TRUE(locker.Sleeps());
  looper->Quit();
  EXPECT_TRUE(locker.IsWoken());
}

TEST(Looper, IsNoValidTargetOnceItHasQuitThoughItsHandlerIsStillRunning) {
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

TEST(Looper, DeliversNothingAfterQuitNotEvenTheMessageItHasDequeued) {
  static std::atomic<int> delivered{0};
  struct Counter : BLooper {
    void MessageReceived(BMessage*) override { ++delivered; }
  };
  auto* const looper = new Counter;
  looper->Run();
  ASSERT_TRUE(looper->Lock());
  looper->PostMessage('late');
  while (looper->CountMessages() > 0) std::this_thread::yield(); // its thread has dequeued it and waits for the lock
  looper->Quit();
  EXPECT_EQ(delivered, 0);
}

TEST(Looper, WhoseThreadCannotStartReportsThatAndIsDeletedByQuit) {
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

TEST(Looper, AnswerAfterTheTimeOutIsIgnored) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessage question('ping');
  BMessage answer('mine');
  EXPECT_EQ(BMessenger(looper.get()).SendMessage(&question, &answer, B_INFINITE_TIMEOUT, 1000), B_TIMED_OUT);
  EXPECT_EQ(answer.what, uint32{'mine'});
  looper->DeliverAll();
}

TEST(Looper, EndsFromBothSidesAThousandTimes) {
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

TEST(Looper, NeverWaitsForRoomInItsOwnFullQueue) {
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

TEST(Looper, EverySenderThatWaitsForRoomGetsIt) {
  OwnLooper<Recorder> looper(new Recorder(nullptr, 2));
  looper->Run();
  std::vector<std::jthread> senders;
  for (int i = 0; i < 8; ++i)
    senders.emplace_back([messenger = BMessenger(looper.get())] {
      for (int k = 0; k < 2000; ++k) messenger.SendMessage('some');
    });
  senders.clear();
  EXPECT_EQ(answer_to('ping', BMessenger(looper.get())), uint32{'pong'});
}

TEST(Looper, CoalescedNoticeIsQueuedOnceEvenInAFullQueue) {
  OwnLooper<Recorder> looper(new Recorder(nullptr, 1));
  const BMessenger messenger(looper.get());
  messenger.SendMessage('full');
  for (int i = 0; i < 100; ++i) EXPECT_EQ(messenger.SendCoalesced('move'), B_OK);
  EXPECT_EQ(messenger.SendCoalesced('size'), B_OK);
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('full', 'move', 'size'));
  messenger.SendCoalesced('move'); // the first has been delivered
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('full', 'move', 'size', 'move'));
  BHandler handlers[2];
  for (BHandler& handler : handlers) {
    looper->AddHandler(&handler);
    BMessenger(&handler).SendCoalesced('move');
  }
  EXPECT_EQ(looper->CountMessages(), 2) << "each handler gets its own";
}

TEST(Looper, NonblockingThreadNeverWaitsForALooper) {
  OwnLooper<Recorder> looper(new Recorder(nullptr, 1));
  const BMessenger messenger(looper.get());
  BMessage answer;
  const BMessage question('ping');
  const NonblockingThread here;
  EXPECT_EQ(messenger.SendMessage(&question, &answer), B_TIMED_OUT) << "it is queued";
  EXPECT_EQ(messenger.SendMessage('some'), B_WOULD_BLOCK);
  EXPECT_EQ(messenger.SendMessage(&question, &answer), B_WOULD_BLOCK);
  ASSERT_TRUE(looper->Lock());
  std::jthread([&] {
    EXPECT_EQ(messenger.LockTargetWithTimeout(1000), B_TIMED_OUT) << "only the marked thread does not wait";
    const NonblockingThread there;
    EXPECT_FALSE(messenger.LockTarget());
    EXPECT_FALSE(looper->Lock());
  }).join();
  looper->Unlock();
}

TEST(Looper, HandlerOfAnotherLooperIsRefused) {
  OwnLooper<Recorder> a(new Recorder);
  OwnLooper<Recorder> b(new Recorder);
  EXPECT_EQ(a->PostMessage('x', b.get()), B_BAD_HANDLER);
}

TEST(Looper, FiltersSeeAMessageFirst) {
  OwnLooper<Recorder> looper(new Recorder);
  auto* const filter = new Skip('skip');
  looper->AddCommonFilter(filter);
  looper->PostMessage('skip');
  looper->PostMessage('some');
  looper->PostMessage('more');
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('some', 'more'));
  EXPECT_TRUE(looper->RemoveCommonFilter(filter));
  delete filter;
  looper->PostMessage('skip');
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('some', 'more', 'skip'));
}

TEST(Looper, AnswersWhetherItAgreedToQuit) {
  struct Stubborn : BLooper {
    bool QuitRequested() override { return false; }
  };
  OwnLooper<Stubborn> looper(new Stubborn);
  looper->Run();
  EXPECT_EQ(field<bool>(ask(BMessenger(looper.get()), BMessage(B_QUIT_REQUESTED)), "result"), false);
}

TEST(Looper, AgreesToAQueuedQuitRequestWhenItEndsFirst) {
  OwnLooper<BLooper> looper(new BLooper("ended by another"));
  OwnLooper<Recorder> asker(new Recorder);
  const BMessage quit(B_QUIT_REQUESTED);
  ASSERT_EQ(BMessenger(looper.get()).SendMessage(&quit, asker.get()), B_OK);
  looper.reset();
  asker->DeliverAll();
  EXPECT_THAT(asker->fReceived, ElementsAre(uint32{B_REPLY}));
}

TEST(MessageRunner, BeatsUntilItIsDestroyedAndNeverPilesUp) {
  OwnLooper<Recorder> looper(new Recorder), clock(new Recorder);
  const BMessage beat('beat');
  const BMessageRunner ticks(BMessenger(clock.get()), &beat, 1000);
  const auto waitFiveTicks = [&] {
    for (int i = 0; i < 5; ++i) EXPECT_TRUE(eventually([&] { return clock->DeliverNext(); }));
  };
  {
    const BMessageRunner runner(BMessenger(looper.get()), &beat, 1000);
    for (int i = 0; i < 2; ++i) {
      EXPECT_TRUE(eventually([&] { return looper->CountMessages() == 1; }));
      waitFiveTicks();
      EXPECT_EQ(looper->CountMessages(), 1) << "a beat is skipped while the previous one is queued";
      looper->DeliverAll();
    }
  }
  looper->DeliverAll();
  waitFiveTicks();
  EXPECT_EQ(looper->CountMessages(), 0);
}

TEST(MessageRunner, SendsNothingOnceItIsDestroyed) {
  OwnLooper<Recorder> first(new Recorder), looper(new Recorder), last(new Recorder);
  const BMessage beat = message_of('beat', "text", std::string(1 << 20, 'x'));
  const BMessage tick('tick');
  for (int i = 0; i < 100; ++i) {
    const BMessageRunner before(BMessenger(first.get()), &tick, 1000, 1);
    std::optional<BMessageRunner> runner(std::in_place, BMessenger(looper.get()), &beat, 1000, 1);
    while (!first->DeliverNext()) continue; // the next beat is being posted
    runner.reset();
    const int32 sent = looper->CountMessages();
    const BMessageRunner after(BMessenger(last.get()), &tick, 1000, 1);
    while (!last->DeliverNext()) std::this_thread::yield();
    ASSERT_EQ(looper->CountMessages(), sent);
    looper->DeliverAll();
  }
}

TEST(MessageRunner, BeatsSoonWhenItsIntervalBecomesShort) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessage beat('beat');
  BMessageRunner runner(BMessenger(looper.get()), &beat, B_INFINITE_TIMEOUT);
  ASSERT_TRUE(eventually([] { return is_asleep(thread_named("message runner")); }));
  runner.SetInterval(1000);
  EXPECT_TRUE(eventually([&] { return looper->CountMessages() == 1; }));
  const BMessageRunner second(BMessenger(looper.get()), &beat, 1000);
  EXPECT_TRUE(eventually([&] { return looper->CountMessages() == 2; }));
}

TEST(MessageRunner, SendsNoMoreThanItsCount) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessage beat('beat'), clock('tick');
  const BMessageRunner twice(BMessenger(looper.get()), &beat, 1000, 2);
  const BMessageRunner ticks(BMessenger(looper.get()), &clock, 2000);
  const auto count = [&](uint32 what) { return std::ranges::count(looper->fReceived, what); };
  EXPECT_TRUE(eventually([&] {
    looper->DeliverAll();
    return count('beat') >= 2 && count('tick') >= 5;
  }));
  EXPECT_EQ(count('beat'), 2);
}

TEST(MessageRunner, HugeIntervalDoesNotOverflow) {
  OwnLooper<Recorder> looper(new Recorder);
  const BMessage beat('beat');
  BMessageRunner never(BMessenger(looper.get()), &beat, INT64_MAX);
  never.SetInterval(INT64_MAX);
  const BMessageRunner soon(BMessenger(looper.get()), &beat, 1000);
  for (int i = 0; i < 2; ++i) {
    while (looper->CountMessages() == 0) std::this_thread::yield();
    EXPECT_EQ(looper->CountMessages(), 1) << "from one of the two only";
    looper->DeliverAll();
  }
}
