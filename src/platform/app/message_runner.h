#pragma once

#include "platform/app/messenger.h"

#include <memory>

class BMessage;

/** Sends a message again and again, until destroyed or `count` times (-1: without end). One timer thread serves all.
    A beat is left out while the target's queue still holds the last one of this runner. */
class BMessageRunner {
public:
  BMessageRunner(const BMessenger& target, const BMessage* message, bigtime_t interval, int32 count = -1);
  BMessageRunner(const BMessageRunner&) = delete;
  BMessageRunner& operator=(const BMessageRunner&) = delete;
  /** Nothing is sent once this has returned. */
  ~BMessageRunner();

  /** At least 1 ms. The next beat comes one new interval from now. */
  status_t SetInterval(bigtime_t interval);

  struct Beat;

private:
  std::shared_ptr<Beat> fBeat;
};
