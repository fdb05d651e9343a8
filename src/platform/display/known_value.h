#pragma once

#include "platform/display/display_thread.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace display {

/** A value that every window needs and that rarely changes: measured as the display starts, so that reading it does not
    wait for a window being drawn. Thread-safe. */
template <class T>
class KnownValue {
public:
  void Learn(const T& value) {
    {
      const std::scoped_lock hold(fLock);
      fValue = value;
    }
    fLearned.notify_all();
  }
  /** Blocks until the first Learn. */
  T Get() {
    std::unique_lock hold(fLock);
    assert(fValue || !is_display_thread()); // the display thread waits for nobody
    fLearned.wait(hold, [this] { return fValue.has_value(); });
    return *fValue;
  }

private:
  std::mutex fLock;
  std::condition_variable fLearned;
  std::optional<T> fValue;
};

} // namespace display
