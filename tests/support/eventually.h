#pragma once

#include "platform/kernel/threads.h"

/** Waits for the condition; false after a generous time-out. */
template <typename Condition>
bool eventually(Condition holds) {
  for (int i = 0; i < 10000; ++i) {
    if (holds()) return true;
    snooze(5000);
  }
  return false;
}
