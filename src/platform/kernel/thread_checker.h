#pragma once

#include <cassert>
#include <thread>

/** Asserts in debug builds that an object is used by one thread only: the first one that calls Check. It may have been
    made by another. */
class ThreadChecker {
public:
#ifdef NDEBUG
  void Check() const {}
#else
  void Check() const {
    if (fThread == std::thread::id()) fThread = std::this_thread::get_id();
    assert(fThread == std::this_thread::get_id());
  }

private:
  mutable std::thread::id fThread;
#endif
};
