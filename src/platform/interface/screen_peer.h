#pragma once

#include "platform/support/geometry.h"

#include <memory>

namespace display {

/** The usable part of the screen nearest to `where`. Any thread; waits for the display's start only, not for what is
    being drawn. */
BRect usable_screen(BPoint where);

/** Knows the screens, also when one comes, goes or changes. On the display thread, for as long as the display runs. */
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
