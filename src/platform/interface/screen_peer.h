#pragma once

#include "platform/support/geometry.h"

#include <memory>

namespace display {

/** The available area of the screen at `where`, or of the primary one. Any thread; blocks only until the display has
    started. */
BRect usable_screen(BPoint where);

/** Keeps the list behind `usable_screen` up to date. Display thread, while the display runs. */
class ScreenWatch {
public:
  ScreenWatch();
  ScreenWatch(const ScreenWatch&) = delete;
  ScreenWatch& operator=(const ScreenWatch&) = delete;
  ~ScreenWatch();

private:
  struct Impl;
  std::unique_ptr<Impl> fImpl;
};

} // namespace display
