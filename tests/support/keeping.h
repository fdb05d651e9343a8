#pragma once

#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

/** A looper or window that records its messages. */
template <class Looper>
class Keeping : public Looper {
public:
  using Looper::Looper;
  void MessageReceived(BMessage* message) override {
    fReceived.push_back(*message);
    Looper::MessageReceived(message);
  }
  std::vector<BMessage> Taken() { return std::exchange(fReceived, {}); }
  std::vector<uint32> Codes() const {
    std::vector<uint32> codes;
    for (const BMessage& message : fReceived) codes.push_back(message.what);
    return codes;
  }
  std::vector<BMessage> fReceived;
};

/** A window whose messages are delivered by the test. */
template <class Window>
class WithWindow : public testing::Test {
protected:
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
  /** The codes of the messages caused by `act`. */
  std::vector<uint32> After(const std::function<void()>& act) {
    fWindow->fReceived.clear();
    act();
    hands::settle(*fWindow);
    return fWindow->Codes();
  }
  OwnLooper<Window> fWindow;
};
