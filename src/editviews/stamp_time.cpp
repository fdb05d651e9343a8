#include "editviews/stamp_time.h"

#include "hostlink/host_link.h"
#include "platform/kernel/threads.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {
/** The time that the player has to answer the request for its position. */
constexpr bigtime_t kAnswerUs = 20000;
/** The longest that a key event may have waited to be corrected for it. */
constexpr bigtime_t kLongestWaitUs = 5000000;
} // namespace

int32 stamp_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> whenUs) {
  // The second refresh takes over the answer to the first request: the position at the moment of the key.
  const bigtime_t askedUs = system_time();
  frontEnd->Refresh();
  snooze(kAnswerUs);
  frontEnd->Refresh();
  const bool isMoving = whenUs && !frontEnd->IsKnownToRest();
  const int64 sinceUs = isMoving ? std::clamp<bigtime_t>(askedUs - *whenUs, 0, kLongestWaitUs) : 0;
  const int64 playedMs = (sinceUs * frontEnd->SpeedPercent() / 100 + 500) / 1000;
  const int64 timeMs = frontEnd->PositionMs() - playedMs + gPref->Values()->timeOffsetMs;
  return static_cast<int32>(std::clamp<int64>(timeMs, 0, INT32_MAX));
}
