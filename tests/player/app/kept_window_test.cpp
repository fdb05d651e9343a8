#include "player/app/kept_window.h"

#include "player/model/player_messages.h"
#include "tests/support/messages.h"
#include "tests/support/scratch_folder.h"

TEST(KeptWindow, ComesBackMaximizedAsItWas) {
  const ScratchFolder settings;
  setenv("XDG_CONFIG_HOME", settings.Path().c_str(), 1);
  for (const bool isMaximized : {true, false}) {
    TKeptWindow window{BMessenger()};
    window.Restore();
    window.TakePlace(message_of(kMsgWindowPlaced, "frame", BRect{60, 80, 500, 560}, "maximized", isMaximized));
    window.SaveChanges();
    TKeptWindow next{BMessenger()};
    next.Restore();
    EXPECT_EQ(next.IsMaximized(), isMaximized);
  }
}
