#pragma once

#include "platform/kernel/threads.h"

/** Waits until the condition holds; false when that takes far too long. */
template <typename Condition>
bool eventually(Condition holds) {
  for (int i = 0; i < 10000; ++i) {
    if (holds()) return true;
    snooze(5000);
  }
  return false;
}
