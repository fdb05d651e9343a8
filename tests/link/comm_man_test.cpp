#include "plugin/comm_man.h"

#include "platform/app/application.h"
#include "platform/app/message.h"

#include <gtest/gtest.h>

namespace {

struct Manager : TCommMan {
  using TCommMan::TCommMan;
  void MessageReceived(BMessage* message) override {
    if (message->what == 'test') ++fReceived;
    TCommMan::MessageReceived(message);
  }
  int fReceived = 0;
};

void end(BLooper* looper) {
  looper->Lock();
  looper->Quit();
}

} // namespace

TEST(CommMan, WhicheverStartsSecondConnectsBoth) {
  auto* const app = new BApplication("application/x-vnd.test");
  auto* const first = new Manager("first manager", "second manager");
  first->Run();
  const BMessage message('test');
  EXPECT_EQ(first->SendMessage(&message), -1) << "alone";
  auto* const second = new Manager("second manager", "first manager");
  second->Run();
  EXPECT_EQ(second->SendMessage(&message), B_OK);
  const BMessage sync('nope');
  BMessage answer;
  BMessenger(first).SendMessage(&sync, &answer); // everything before this was handled
  EXPECT_EQ(first->fReceived, 1);
  EXPECT_EQ(first->SendMessage(&message), B_OK) << "told where the second is";
  BMessenger(second).SendMessage(&sync, &answer);
  EXPECT_EQ(second->fReceived, 1);
  end(second);
  EXPECT_EQ(first->SendMessage(&message), B_BAD_PORT_ID);
  end(first);
  end(app);
}

TEST(CommMan, IgnoresAConnectionWithoutItsField) {
  auto* const manager = new Manager("a manager", "nobody");
  manager->CommManConnected(BMessage(kMsgPartnerConnects));
  const BMessage message('test');
  EXPECT_EQ(manager->SendMessage(&message), -1);
  BWindow* none = nullptr;
  manager->CloseWindow(&none);
  end(manager);
}
