#pragma once

#include <cassert>
#include <thread>

/** Checks in debug builds that an object is only used on the thread that made it. */
class ThreadChecker {
public:
#ifdef NDEBUG
  void Check() const {}
#else
  void Check() const {
    assert(fOwner == std::this_thread::get_id());
  }

private:
  std::thread::id fOwner = std::this_thread::get_id();
#endif
};
