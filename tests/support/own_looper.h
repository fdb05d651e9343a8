#pragma once

#include "platform/app/looper.h"

#include <memory>

struct EndLooper {
  void operator()(BLooper* looper) const {
    if (looper->Lock()) looper->Quit();
  }
};

/** Owns a looper or window: calls Quit instead of delete. */
template <typename Looper>
using OwnLooper = std::unique_ptr<Looper, EndLooper>;
