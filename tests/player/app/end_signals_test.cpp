#include "player/app/end_signals.h"

#include "platform/app/message.h"
#include "player/model/player_messages.h"
#include "tests/support/own_looper.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <csignal>

namespace {

/** The player's looper, its messages handed over one by one. */
struct TPlayer : BLooper {
  void MessageReceived(BMessage* message) override { fCodes.push_back(message->what); }
  std::vector<uint32> fCodes;
};

bool is_left_to_the_system(int number) {
  struct sigaction now {};
  sigaction(number, nullptr, &now);
  return now.sa_handler == SIG_DFL;
}

} // namespace

TEST(EndSignals, TheFirstAsksTheWindowsAndTheSecondEnds) {
  int argc = 1;
  char name[] = "test";
  char* argv[] = {name, nullptr};
  const QCoreApplication events(argc, argv);
  const OwnLooper<TPlayer> player(new TPlayer);
  {
    const TEndSignals watch(BMessenger(player.get()), nullptr);
    EXPECT_FALSE(is_left_to_the_system(SIGTERM));
    std::raise(SIGTERM);
    EXPECT_TRUE(is_left_to_the_system(SIGTERM));
    EXPECT_FALSE(is_left_to_the_system(SIGINT));
    QCoreApplication::processEvents();
    player->DeliverAll();
    EXPECT_EQ(player->fCodes, std::vector<uint32>{kMsgWindowCloses});
  }
  EXPECT_TRUE(is_left_to_the_system(SIGINT)) << "as it was before";
}
