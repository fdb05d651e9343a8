#pragma once

#include <memory>

namespace display {

/** While it exists, its thread is the display thread and runs what is posted. One per process, created once. */
class Queue {
public:
  Queue();
  Queue(const Queue&) = delete;
  Queue& operator=(const Queue&) = delete;
  /** Drops what is still queued and everything posted later. */
  ~Queue();

private:
  struct Impl;
  std::unique_ptr<Impl> fImpl;
};

} // namespace display
