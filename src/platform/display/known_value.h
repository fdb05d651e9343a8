#pragma once

#include "platform/display/display_thread.h"

#include <condition_variable>
#include <mutex>
#include <optional>

namespace display {

/** What every window needs and what seldom or never changes while the display runs: learned as the display starts, so
    that nobody waits for it behind a window that is being drawn. Any thread; the lock guards the value. */
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
  /** Waits until it was learned. */
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
