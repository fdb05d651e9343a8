#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

/** Parallel work on the items 0 … `count` - 1, in runs of consecutive items, each processed by one worker thread. */
struct TParallelWork {
  size_t count = 0;
  size_t runLength = 1;
  unsigned threads = 1;
  /** Called on a worker thread for the items `first` … `last` - 1. Must not throw. */
  std::function<void(size_t first, size_t last)> work;
  /** Called on the calling thread when that run is finished; in order. */
  std::function<void(size_t first, size_t last)> finished;
  /** Called on the calling thread periodically while it waits. */
  std::function<void()> waiting;
  /** Once true, no further run is started. Called on all threads. */
  std::function<bool()> isStopped;
};

/** Returns the number of finished items: all, unless stopped. */
size_t run_in_parallel(const TParallelWork& work);
