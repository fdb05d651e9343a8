#pragma once

#include <memory>

namespace display {

/** Keeps the list of screens behind `screen_frame` up to date. Display thread, while the display runs. */
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
