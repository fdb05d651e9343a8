#include "editviews/stamp_time.h"

#include "hostlink/host_link.h"
#include "platform/kernel/threads.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

/** The time that the player has to answer the request for its position. */
constexpr bigtime_t kAnswerUs = 20000;
/** Key events take less unless the window is busy, and their own times are known to milliseconds only. */
constexpr bigtime_t kUsualWaitUs = 2000;
/** The longest that a key event may have waited to be corrected for it. */
constexpr bigtime_t kLongestWaitUs = 5000000;

int32 tag_time(int64 positionMs) {
  return static_cast<int32>(std::clamp<int64>(positionMs + gPref->Values()->timeOffsetMs, 0, INT32_MAX));
}

/** The second refresh takes over the answer to the first request: the position at the moment of the key. */
void ask_for_position(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> keyUs, bigtime_t nowUs) {
  const bool hasWaited = keyUs && nowUs - *keyUs > kUsualWaitUs;
  frontEnd->Refresh(hasWaited ? keyUs : std::nullopt);
  snooze(kAnswerUs);
  frontEnd->Refresh();
}

} // namespace

int32 stamp_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> keyUs) {
  ask_for_position(frontEnd, keyUs, system_time());
  return tag_time(frontEnd->PositionMs());
}

int32 word_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> keyUs) {
  const bigtime_t askedUs = system_time();
  ask_for_position(frontEnd, keyUs, askedUs);
  const bool isCurrent = keyUs && !frontEnd->IsKnownToRest() && !frontEnd->IsPositionOf(*keyUs);
  const int64 sinceUs = isCurrent ? std::clamp<bigtime_t>(askedUs - *keyUs, 0, kLongestWaitUs) : 0;
  const int64 playedMs = (sinceUs * frontEnd->SpeedPercent() / 100 + 500) / 1000;
  return tag_time(frontEnd->PositionMs() - playedMs);
}
