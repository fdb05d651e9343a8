#pragma once

#include <atomic>
#include <cstddef>
#include <functional>

/** Work on the items 0 … `count` - 1, in runs of neighbours, each whole on one of several threads. */
struct TParallelWork {
  size_t count = 0;
  size_t runLength = 1;
  unsigned threads = 1;
  /** On a worker: the items from `first` to before `last`. Does not throw. */
  std::function<void(size_t first, size_t last)> work;
  /** On the calling thread: the same run is finished; in order. */
  std::function<void(size_t first, size_t last)> finished;
  /** On the calling thread, every now and then while it waits. */
  std::function<void()> waiting;
  /** Once true, no further run is begun; asked on every thread. */
  std::function<bool()> isStopped;
};

/** Returns how many items were finished: all of them, unless it was stopped. */
size_t run_in_parallel(const TParallelWork& work);
