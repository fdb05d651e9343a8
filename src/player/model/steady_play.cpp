#include "player/model/steady_play.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr bigtime_t kLongestAgoUs = 5000000;
/** Nobody seeks by less; two readings differ by less even while the machine is busy. */
constexpr int64 kToleranceUs = 20000;
/** After a seek the position stands still for up to 90 ms, which shows only over more than one reading; the clocks of
   the sound and of the system drift apart too slowly to show within that time. */
constexpr bigtime_t kAnchoredUs = 1000000;
constexpr bigtime_t kSoonUs = 90000;
/** Longer than the sound stands still after a seek. */
constexpr bigtime_t kSteadyUs = 150000;
constexpr int64 kUsPerMs = 1000;

int64 played_us(bigtime_t passedUs, int32 speedPercent) {
  return passedUs * speedPercent / 100;
}

int32 rounded_ms(int64 positionUs) {
  return static_cast<int32>(std::max<int64>((positionUs + kUsPerMs / 2) / kUsPerMs, 0));
}

} // namespace

bool TSteadyPlay::Continues(const TReadPosition& read) const {
  if (!read.isPlaying || !fAnchor.isPlaying || read.speedPercent != fAnchor.speedPercent) return false;
  const int64 dueUs = fAnchor.positionUs + played_us(read.atUs - fAnchor.atUs, read.speedPercent);
  return std::abs(read.positionUs - dueUs) <= kToleranceUs;
}

void TSteadyPlay::Add(const TReadPosition& read) {
  const bool continues = Continues(read);
  if (!continues) fSinceUs = read.atUs;
  if (!continues || read.atUs - fAnchor.atUs > kAnchoredUs) fAnchor = read;
  fLast = read;
}

std::optional<int32> TSteadyPlay::PositionMsAt(bigtime_t whenUs) const {
  const bigtime_t earliestUs = std::max(fSinceUs, fLast.atUs - kLongestAgoUs);
  if (!fLast.isPlaying || whenUs < earliestUs || whenUs > fLast.atUs) return {};
  return rounded_ms(fLast.positionUs - played_us(fLast.atUs - whenUs, fLast.speedPercent));
}

std::optional<int32> TSteadyPlay::PositionMsSoon(bigtime_t nowUs) const {
  const bigtime_t passedUs = nowUs - fLast.atUs;
  if (!fLast.isPlaying || passedUs < 0 || passedUs > kSoonUs || fLast.atUs - fSinceUs < kSteadyUs) return {};
  return rounded_ms(fLast.positionUs + played_us(passedUs, fLast.speedPercent));
}
