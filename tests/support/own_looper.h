#pragma once

#include "platform/app/looper.h"

#include <memory>

struct EndLooper {
  void operator()(BLooper* looper) const {
    if (looper->Lock()) looper->Quit();
  }
};

/** A looper, or a window, that ends with the test it belongs to. */
template <typename Looper>
using OwnLooper = std::unique_ptr<Looper, EndLooper>;
