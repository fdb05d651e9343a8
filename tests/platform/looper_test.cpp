#include "platform/app/application.h"
#include "platform/app/message.h"
#include "platform/app/message_filter.h"
#include "platform/app/message_runner.h"
#include "platform/app/roster.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <stdexcept>
#include <thread>

using testing::ElementsAre;

namespace {

/** Remembers what it gets; answers 'ping' with 'pong', drops 'drop', throws at 'thrw'. */
class Recorder : public BLooper {
public:
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
    if (message->what == 'scri') BLooper::MessageReceived(message);
  }
  std::vector<uint32> fReceived;

private:
  std::atomic<int>* fAlive;
};

void end(BLooper* looper) {
  looper->Lock();
  looper->Quit();
}

uint32 ask(const BMessenger& target, uint32 what) {
  const BMessage question(what);
  BMessage answer;
  EXPECT_EQ(target.SendMessage(&question, &answer), B_OK);
  return answer.what;
}

struct Skip : BMessageFilter {
  using BMessageFilter::BMessageFilter;
  filter_result Filter(BMessage*, BHandler**) override { return B_SKIP_MESSAGE; }
};

} // namespace

TEST(Looper, DeliversInOrderByHand) {
  auto* const looper = new Recorder;
  looper->PostMessage('one ');
  looper->PostMessage('two ');
  EXPECT_EQ(looper->DeliverAll(), 2);
  EXPECT_FALSE(looper->DeliverNext());
  EXPECT_THAT(looper->fReceived, ElementsAre('one ', 'two '));
  end(looper);
}

TEST(Looper, QuestionsAreAnsweredOrReleased) {
  auto* const looper = new Recorder;
  const BMessenger messenger(looper);
  looper->Run();
  EXPECT_EQ(ask(messenger, 'ping'), uint32{'pong'});
  EXPECT_EQ(ask(messenger, 'drop'), B_NO_REPLY_CODE);
  EXPECT_EQ(ask(messenger, 'thrw'), B_NO_REPLY_CODE) << "a handler that throws ends nothing";
  EXPECT_EQ(ask(messenger, 'ping'), uint32{'pong'});
  end(looper);
  const BMessage question('ping');
  BMessage answer;
  EXPECT_EQ(messenger.SendMessage(&question, &answer), B_BAD_PORT_ID);
  EXPECT_FALSE(messenger.IsValid());
}

TEST(Looper, AskerIsReleasedWhenTheTargetGoesWithTheQuestionInItsQueue) {
  auto* const looper = new Recorder;
  const BMessenger messenger(looper);
  std::thread asker([&] { EXPECT_EQ(ask(messenger, 'ping'), B_NO_REPLY_CODE); });
  while (looper->CountMessages() == 0) std::this_thread::yield();
  end(looper);
  asker.join();
}

TEST(Looper, AnswerThatComesTooLateHurtsNobody) {
  auto* const looper = new Recorder;
  const BMessage question('ping');
  BMessage answer('mine');
  EXPECT_EQ(BMessenger(looper).SendMessage(&question, &answer, B_INFINITE_TIMEOUT, 1000), B_TIMED_OUT);
  EXPECT_EQ(answer.what, uint32{'mine'});
  looper->DeliverAll();
  end(looper);
}

TEST(Looper, EndsFromBothSidesAThousandTimes) {
  std::atomic<int> alive{0};
  for (int i = 0; i < 1000; ++i) {
    auto* const looper = new Recorder(&alive);
    const BMessenger messenger(looper);
    looper->Run();
    messenger.SendMessage('some');
    if (i % 2 == 0) {
      end(looper);
      EXPECT_FALSE(messenger.IsValid());
    } else {
      messenger.SendMessage(B_QUIT_REQUESTED);
    }
  }
  while (alive > 0) std::this_thread::yield();
}

TEST(Looper, FullQueueRefusesAPost) {
  auto* const looper = new Recorder(nullptr, 2);
  EXPECT_EQ(looper->PostMessage('a'), B_OK);
  EXPECT_EQ(looper->PostMessage('b'), B_OK);
  EXPECT_EQ(looper->PostMessage('c'), B_WOULD_BLOCK);
  looper->DeliverNext();
  EXPECT_EQ(looper->PostMessage('c'), B_OK);
  end(looper);
}

TEST(Looper, HandlerOfAnotherLooperIsRefused) {
  auto* const a = new Recorder;
  auto* const b = new Recorder;
  EXPECT_EQ(a->PostMessage('x', b), B_BAD_HANDLER);
  end(a);
  end(b);
}

TEST(Looper, FiltersSeeAMessageFirst) {
  auto* const looper = new Recorder;
  auto* const filter = new Skip('skip');
  looper->AddCommonFilter(filter);
  looper->PostMessage('skip');
  looper->PostMessage('some');
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('some'));
  EXPECT_TRUE(looper->RemoveCommonFilter(filter));
  delete filter;
  looper->PostMessage('skip');
  looper->DeliverAll();
  EXPECT_THAT(looper->fReceived, ElementsAre('some', 'skip'));
  end(looper);
}

TEST(Looper, TellsTheAskerWhetherItAgreedToQuit) {
  struct Stubborn : BLooper {
    bool QuitRequested() override { return false; }
  };
  auto* const looper = new Stubborn;
  const BMessenger messenger(looper);
  looper->Run();
  const BMessage quit(B_QUIT_REQUESTED);
  BMessage answer;
  bool agreed = true;
  ASSERT_EQ(messenger.SendMessage(&quit, &answer), B_OK);
  EXPECT_EQ(answer.FindBool("result", &agreed), B_OK);
  EXPECT_FALSE(agreed);
  end(looper);
}

TEST(Looper, EndsWithTheWishForItsEndInItsQueueAndAgreesToIt) {
  auto* const looper = new BLooper("taken along by another");
  auto* const asker = new Recorder;
  const BMessage quit(B_QUIT_REQUESTED);
  ASSERT_EQ(BMessenger(looper).SendMessage(&quit, asker), B_OK);
  end(looper);
  asker->DeliverAll();
  EXPECT_THAT(asker->fReceived, ElementsAre(uint32{B_REPLY}));
  end(asker);
}

TEST(Looper, UnknownScriptIsAnsweredNotUnderstood) {
  auto* const looper = new Recorder;
  looper->Run();
  BMessage question('scri');
  question.AddSpecifier("Nothing");
  BMessage answer;
  ASSERT_EQ(BMessenger(looper).SendMessage(&question, &answer), B_OK);
  EXPECT_EQ(answer.what, B_MESSAGE_NOT_UNDERSTOOD);
  end(looper);
}

TEST(MessageRunner, BeatsUntilItGoesAndNeverPilesUp) {
  auto* const looper = new Recorder;
  const BMessage beat('beat');
  {
    const BMessageRunner runner(BMessenger(looper), &beat, 1000);
    while (looper->CountMessages() == 0) std::this_thread::yield();
    snooze(20000);
    EXPECT_EQ(looper->CountMessages(), 1) << "a beat is left out while the last one waits";
    looper->DeliverAll();
    while (looper->CountMessages() == 0) std::this_thread::yield();
  }
  looper->DeliverAll();
  snooze(5000);
  EXPECT_EQ(looper->CountMessages(), 0);
  end(looper);
}

TEST(MessageRunner, IntervalPastAllCountingIsLong) {
  auto* const looper = new Recorder;
  const BMessage beat('beat');
  {
    BMessageRunner never(BMessenger(looper), &beat, INT64_MAX);
    never.SetInterval(INT64_MAX);
    const BMessageRunner soon(BMessenger(looper), &beat, 1000);
    while (looper->CountMessages() == 0) std::this_thread::yield();
    looper->DeliverAll();
    while (looper->CountMessages() == 0) std::this_thread::yield();
    EXPECT_EQ(looper->CountMessages(), 1) << "only one of the two has beaten";
  }
  end(looper);
}

TEST(Application, IsFoundBySignatureAndKnowsItsLoopers) {
  auto* const app = new BApplication("application/x-vnd.test");
  auto* const looper = new Recorder;
  EXPECT_TRUE(be_roster->IsRunning("application/x-vnd.test"));
  EXPECT_EQ(be_roster->AddName("application/x-vnd.second", BMessenger(looper)), B_OK);
  EXPECT_EQ(BMessenger("application/x-vnd.second"), BMessenger(looper));
  EXPECT_EQ(app->CountLoopers(), 2);
  const thread_id thread = app->Run();
  EXPECT_EQ(app->LooperOn(thread), BMessenger(app));
  EXPECT_FALSE(app->LooperOn(thread + 1000).IsValid());
  end(looper);
  EXPECT_FALSE(be_roster->IsRunning("application/x-vnd.second"));
  EXPECT_EQ(be_roster->Launch("application/x-vnd.nobody"), B_LAUNCH_FAILED);
  end(app);
  EXPECT_EQ(be_app, nullptr);
}
