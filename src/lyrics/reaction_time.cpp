#include "lyrics/reaction_time.h"

#include <algorithm>
#include <cstdlib>

namespace {

/** Values this close to the median are never outliers: nobody taps more evenly. */
constexpr int32 kAlwaysNearMs = 40;
/** Values further away than this many median deviations are outliers. */
constexpr int32 kTooFar = 3;
/** The median deviation of values that agree. */
constexpr int32 kAgreesWithinMs = 80;

constexpr size_t kWarmUpClicks = 4;
constexpr size_t kLeastTaps = 6;

/** A correction after a longer time is a change of mind. */
constexpr int64 kSoonMs = 120000;
/** A larger one corrects a stamp on the wrong line. */
constexpr int32 kLargestCorrectionMs = 1000;
constexpr size_t kLeastCorrections = 6;
constexpr size_t kKeptCorrections = 16;
/** Less is not audible. */
constexpr int32 kWorthReportingMs = 30;

int32 median(std::vector<int32> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::ranges::nth_element(values, middle);
  return *middle;
}

/** The median distance of the values from that one. */
int32 spread_around(const std::vector<int32>& values, int32 centre) {
  std::vector<int32> distances;
  distances.reserve(values.size());
  for (const int32 value : values) distances.push_back(std::abs(value - centre));
  return median(distances);
}

size_t nearest(std::span<const int64> clicksMs, int64 tapMs) {
  const auto distance = [tapMs](int64 click) { return std::abs(click - tapMs); };
  return static_cast<size_t>(std::ranges::min_element(clicksMs, {}, distance) - clicksMs.begin());
}

} // namespace

std::optional<int32> typical_lateness(std::vector<int32> latenessMs, size_t least) {
  if (latenessMs.size() < std::max(least, size_t{1})) return std::nullopt;
  const int32 centre = median(latenessMs);
  const int32 bound = std::max(kAlwaysNearMs, kTooFar * spread_around(latenessMs, centre));
  std::erase_if(latenessMs, [&](int32 value) { return std::abs(value - centre) > bound; });
  if (latenessMs.size() < least) return std::nullopt;
  const int32 found = median(latenessMs);
  return spread_around(latenessMs, found) <= kAgreesWithinMs ? std::optional(found) : std::nullopt;
}

std::optional<int32> tapped_lateness(std::span<const int64> clicksMs, std::span<const int64> tapsMs) {
  if (clicksMs.empty()) return std::nullopt;
  std::map<size_t, int32> latenessOfClick;
  for (const int64 tap : tapsMs) {
    const size_t click = nearest(clicksMs, tap);
    if (click >= kWarmUpClicks) latenessOfClick.try_emplace(click, static_cast<int32>(tap - clicksMs[click]));
  }
  std::vector<int32> lateness;
  lateness.reserve(latenessOfClick.size());
  for (const auto& [click, latenessMs] : latenessOfClick) lateness.push_back(latenessMs);
  return typical_lateness(lateness, kLeastTaps);
}

void TStampCorrections::Stamped(int32 line, int32 tagMs, int64 nowMs, int32 offsetMs) {
  if (offsetMs != fOffsetMs) {
    // Previous corrections were made with another offset.
    *this = TStampCorrections();
    fOffsetMs = offsetMs;
  }
  const auto stamp = fStamps.find(line);
  const bool isRetake = stamp != fStamps.end() && nowMs - stamp->second.whenMs <= kSoonMs;
  if (isRetake) Correct(&stamp->second, tagMs);
  fStamps.insert_or_assign(line, TStamp{tagMs, nowMs, -1});
}

void TStampCorrections::Moved(int32 line, int32 tagMs, int64 nowMs) {
  const auto stamp = fStamps.find(line);
  if (stamp != fStamps.end() && nowMs - stamp->second.whenMs <= kSoonMs) Correct(&stamp->second, tagMs);
}

/** Several moves of one line are one correction. */
void TStampCorrections::Correct(TStamp* stamp, int32 tagMs) {
  const int32 latenessMs = stamp->tagMs - tagMs;
  const bool isSample = std::abs(latenessMs) <= kLargestCorrectionMs;
  if (stamp->sample >= fFirstSample) {
    if (isSample) fLateness[static_cast<size_t>(stamp->sample - fFirstSample)] = latenessMs;
    return;
  }
  if (!isSample || latenessMs == 0) return;
  stamp->sample = fFirstSample + static_cast<int64>(fLateness.size());
  fLateness.push_back(latenessMs);
  if (fLateness.size() <= kKeptCorrections) return;
  fLateness.pop_front();
  ++fFirstSample;
}

void TStampCorrections::ForgetLines() {
  fStamps.clear();
}

std::optional<int32> TStampCorrections::Lateness() const {
  return typical_lateness({fLateness.begin(), fLateness.end()}, kLeastCorrections);
}

std::optional<int32> TStampCorrections::NewFinding() {
  const auto found = Lateness();
  if (!found || std::abs(*found) < kWorthReportingMs) return std::nullopt;
  if (fReported && std::abs(*found - *fReported) < kWorthReportingMs) return std::nullopt;
  fReported = found;
  return found;
}
