#include "family/comm_man.h"

#include "platform/app/application.h"
#include "platform/app/looper_lock.h"
#include "plugin/message_codes.h"
#include "tests/support/messages.h"
#include "tests/support/own_looper.h"
#include "tests/support/waiter.h"

namespace {

struct Manager : TCommMan {
  using TCommMan::TCommMan;
  void MessageReceived(BMessage* message) override {
    if (message->what == 'test') ++fReceived;
    TCommMan::MessageReceived(message);
  }
  int fReceived = 0;
};

} // namespace

TEST(CommMan, WhicheverStartsSecondConnectsBoth) {
  const OwnLooper<BApplication> app(new BApplication("application/x-vnd.test"));
  const OwnLooper<Manager> first(new Manager("first manager", "second manager"));
  first->Run();
  const BMessage message('test');
  EXPECT_EQ(first->SendMessage(&message), -1) << "alone";
  OwnLooper<Manager> second(new Manager("second manager", "first manager"));
  second->Run();
  EXPECT_EQ(second->SendMessage(&message), B_OK);
  wait_for(BMessenger(first.get()));
  EXPECT_EQ(first->fReceived, 1);
  EXPECT_EQ(first->SendMessage(&message), B_OK) << "told where the second is";
  wait_for(BMessenger(second.get()));
  EXPECT_EQ(second->fReceived, 1);
  second.reset();
  EXPECT_EQ(first->SendMessage(&message), B_BAD_PORT_ID);
}

TEST(CommMan, TheEndDoesNotWaitForAPartnerThatDoesNotAnswer) {
  const OwnLooper<BApplication> app(new BApplication("application/x-vnd.test"));
  const OwnLooper<Manager> first(new Manager("first manager", "second manager"));
  first->Run();
  const OwnLooper<Manager> second(new Manager("second manager", "first manager"));
  second->Run();
  wait_for(BMessenger(first.get()));
  const TLooperLock hangs(second.get());
  const BMessage message('test');
  const Waiter waiter([&] {
    BMessage answer;
    EXPECT_EQ(first->SendMessage(&message, &answer), B_TIMED_OUT);
  });
  ASSERT_TRUE(waiter.Sleeps());
  first->EndWaiting();
  EXPECT_TRUE(waiter.IsWoken());
}
