#pragma once

#include "platform/support/types.h"

class BHandler;
class BLooper;
class BMessage;

enum filter_result { B_SKIP_MESSAGE, B_DISPATCH_MESSAGE };

/** Sees messages of one code (all for code 0) before their handler does, on the looper's thread. Owned by its looper
    until it is removed. */
class BMessageFilter {
public:
  explicit BMessageFilter(uint32 code) : fCode(code) {}
  BMessageFilter(const BMessageFilter&) = delete;
  BMessageFilter& operator=(const BMessageFilter&) = delete;
  virtual ~BMessageFilter() = default;

  /** May replace the target. */
  virtual filter_result Filter(BMessage* message, BHandler** target) = 0;
  uint32 Command() const { return fCode; }
  BLooper* Looper() const { return fLooper; }

private:
  friend class BLooper;
  uint32 fCode;
  BLooper* fLooper = nullptr;
};
