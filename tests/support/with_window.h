#pragma once

#include "platform/interface/window.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"
#include "tests/support/testing.h"

/** A window whose messages are delivered by the test. */
template <class Window>
struct WithWindow : testing::Test {
  WithWindow() : fWindow(new Window) {
    fWindow->SetRunsOnShow(false);
    fWindow->Show();
    fWindow->Activate();
    hands::settle(*fWindow);
  }
  void Press(const std::string& key) {
    hands::press(*fWindow, key);
    hands::settle(*fWindow);
  }
  template <typename... More>
  void Press(const std::string& first, const std::string& second, const More&... more) {
    Press(first);
    Press(second, more...);
  }
  /** The codes of the messages caused by `act`. */
  std::vector<uint32> After(const std::function<void()>& act) {
    fWindow->fReceived.clear();
    act();
    hands::settle(*fWindow);
    return fWindow->Codes();
  }
  OwnLooper<Window> fWindow;
};
