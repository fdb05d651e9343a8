#include "player/app/end_signals.h"

#include "player/model/player_messages.h"
#include "tests/support/keeping.h"
#include "tests/support/qt_application.h"
#include "tests/support/testing.h"

#include <QCoreApplication>

#include <csignal>

namespace {

bool is_left_to_the_system(int number) {
  struct sigaction now {};
  sigaction(number, nullptr, &now);
  return now.sa_handler == SIG_DFL;
}

} // namespace

TEST(EndSignals, TheFirstAsksTheWindowsAndTheSecondEnds) {
  const OwnApplication<QCoreApplication> events;
  const OwnLooper<Keeping<BLooper>> player(new Keeping<BLooper>);
  {
    const TEndSignals watch(BMessenger(player.get()), nullptr);
    EXPECT_FALSE(is_left_to_the_system(SIGTERM));
    std::raise(SIGTERM);
    EXPECT_TRUE(is_left_to_the_system(SIGTERM));
    EXPECT_FALSE(is_left_to_the_system(SIGINT));
    QCoreApplication::processEvents();
    player->DeliverAll();
    EXPECT_EQ(player->Codes(), std::vector<uint32>{kMsgWindowCloses});
  }
  EXPECT_TRUE(is_left_to_the_system(SIGINT)) << "as it was before";
}
