#include "platform/display/event_time.h"

#include "platform/kernel/threads.h"

#include <QInputEvent>

namespace display {

namespace {
constexpr bigtime_t kUsPerMs = 1000;
/** An older event has a time stamp of another clock. */
constexpr uint32 kOldestMs = 5000;
} // namespace

bigtime_t time_of_stamp(uint64 stampMs, bigtime_t nowUs) {
  const auto ageMs = static_cast<uint32>(nowUs / kUsPerMs) - static_cast<uint32>(stampMs);
  return stampMs == 0 || ageMs > kOldestMs ? nowUs : nowUs - bigtime_t{ageMs} * kUsPerMs;
}

bigtime_t time_of(const QInputEvent& event) {
  return time_of_stamp(event.timestamp(), system_time());
}

} // namespace display
