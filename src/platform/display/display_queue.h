#pragma once

#include <memory>

namespace display {

/** While it lives, its thread is the display thread and makes what is posted. One a process, made once. */
class Queue {
public:
  Queue();
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;
  /** Drops what is still queued, and all that is posted from now on. */
  ~Queue();

private:
  struct Impl;
  std::unique_ptr<Impl> fImpl;
};

} // namespace display
