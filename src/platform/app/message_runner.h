#pragma once

#include "platform/app/messenger.h"

#include <memory>

class BMessage;

/** Sends a message periodically, `count` times (-1: without limit) or until destroyed. One timer thread serves all
    runners. A beat is skipped while the target's queue still holds the previous one of this runner. Thread-safe. */
class BMessageRunner {
public:
  BMessageRunner(const BMessenger& target, const BMessage* message, bigtime_t interval, int32 count = -1);
  BMessageRunner(const BMessageRunner&) = delete;
  BMessageRunner& operator=(const BMessageRunner&) = delete;
  /** Nothing is sent once this has returned. */
  ~BMessageRunner();

  /** Microseconds, 1 ms to a day. The next beat comes one new interval from now. */
  status_t SetInterval(bigtime_t interval);

  struct Beat;

private:
  std::shared_ptr<Beat> fBeat;
};
