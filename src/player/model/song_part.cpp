#include "player/model/song_part.h"

#include "platform/app/message.h"

#include <algorithm>
#include <climits>

namespace {

/** How far the position of another player may be from the part before that is taken for a seek by its user. */
constexpr int32 kOutsideMs = 1000;
/** Such a seek is noticed after that time. */
constexpr bigtime_t kLongestLookUs = 200000;

} // namespace

std::optional<TSongPart> song_part_in(const BMessage& message) {
  TSongPart part;
  if (message.FindInt32("FromMs", &part.fromMs) != B_OK) return {};
  int32 toMs = 0;
  if (message.HasField("ToMs")) {
    if (message.FindInt32("ToMs", &toMs) != B_OK) return {};
    part.toMs = toMs;
  }
  if (message.HasField("Loop") && message.FindBool("Loop", &part.isLooped) != B_OK) return {};
  return part;
}

std::optional<TSongPart> bounded_part(const TSongPart& part, int32 durationMs) {
  const int32 endMs = std::max(durationMs, int32{0});
  TSongPart bounded = part;
  bounded.fromMs = std::clamp(part.fromMs, int32{0}, endMs);
  if (part.toMs || part.isLooped) bounded.toMs = std::clamp(part.toMs.value_or(endMs), int32{0}, endMs);
  if (bounded.toMs.value_or(endMs) - bounded.fromMs < kShortestPartMs) return {};
  return bounded;
}

TPartStep next_part_step(const TSongPart& part, int32 positionMs, int32 speedPercent) {
  using enum TPartStep::TAction;
  const int32 toMs = part.toMs.value_or(INT32_MAX);
  const bool isOutside = positionMs < part.fromMs - kOutsideMs || positionMs - kOutsideMs > toMs;
  if (isOutside) return {kAbandon};
  if (positionMs >= toMs) return {part.isLooped ? kRepeat : kFinish};
  const bigtime_t restUs = bigtime_t{toMs - positionMs} * 1000 * 100 / std::max(speedPercent, int32{1});
  return {kWait, std::min(restUs, kLongestLookUs)};
}
