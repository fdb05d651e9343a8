#include "plugin/sonivo_window.h"

#include "platform/app/application.h"
#include "platform/interface/window.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

template <typename Looper>
void end(Looper* looper) {
  looper->Lock();
  looper->Quit();
}

/** Shown, so that it can be found; without a thread of its own. */
BWindow* show(const char* title) {
  auto* const window = new BWindow({10, 20, 109, 219}, title);
  window->SetRunsOnShow(false);
  window->Show();
  return window;
}

} // namespace

TEST(SonivoWindow, MayBeLookedForWhileOthersComeAndGo) {
  auto* const app = new BApplication("application/x-vnd.test");
  auto* const player = show("Sonivo – song");
  std::atomic<bool> ended{false};
  std::thread others([&] {
    for (int i = 0; i < 100; ++i) end(show("other"));
    ended = true;
  });
  BRect frame;
  do EXPECT_EQ(get_sonivo_win_frame(&frame), B_OK);
  while (!ended); // at least once, however late this thread comes to it
  others.join();
  EXPECT_EQ(frame, (BRect{10, 20, 109, 219}));
  end(player);
  EXPECT_NE(get_sonivo_win_frame(&frame), B_OK);
  end(app);
}
