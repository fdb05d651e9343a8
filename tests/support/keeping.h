#pragma once

#include "platform/app/message.h"
#include "tests/support/own_looper.h"

#include <utility>
#include <vector>

/** A looper or window that records its messages. */
template <class Looper>
struct Keeping : Looper {
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
