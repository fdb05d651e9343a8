#include "player/bus/position_estimate.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr bigtime_t kBurstEveryUs = 8000;
constexpr int kFewestOfBurst = 3;
constexpr int kMostOfBurst = 45; // longer than the usual update interval of 250 ms
constexpr bigtime_t kFirstPauseUs = 100000;
constexpr bigtime_t kLaterPauseUs = 1200000;
constexpr bigtime_t kIdleEveryUs = 1000000;
/** A burst starts this long before a predictable update. */
constexpr bigtime_t kBeforeChangeUs = 16000;
constexpr int64 kForeseeableStepUs = 60000;
/** More than the second of players that report whole seconds. */
constexpr bigtime_t kStalledAfterUs = 2500000;
constexpr int64 kJumpUs = 400000;
constexpr int64 kLargestStepUs = 1100000;
/** A slower answer is too imprecise: it may be from any moment of its round trip. */
constexpr bigtime_t kSlowUs = 50000;
constexpr size_t kLines = 8;       // about ten seconds
constexpr size_t kEnoughLines = 4; // to discard one as an outlier
constexpr size_t kNewLines = 2;
constexpr double kMovedUs = 30000;

} // namespace

double TPositionEstimate::OriginOf(bigtime_t atUs, int64 positionUs) const {
  return static_cast<double>(positionUs) - fRate * static_cast<double>(atUs);
}

int64 TPositionEstimate::Bounded(double positionUs) const {
  const double end = fDurationUs > 0 ? static_cast<double>(fDurationUs) : 9e18;
  return std::llround(std::clamp(positionUs, 0.0, end));
}

int64 TPositionEstimate::PositionUs(bigtime_t nowUs) const {
  if (!fIsPlaying || fIsStalled) return Bounded(fBaseUs);
  return Bounded(fBaseUs + fRate * static_cast<double>(nowUs - fBaseAtUs));
}

void TPositionEstimate::ForgetAnswers() {
  fIsStalled = false;
  fLastUs.reset();
  fJumpLine.reset();
  fAsked = 0;
  fNextBurstUs = 0;
  fBurstHasBest = false;
  fLines.clear();
}

void TPositionEstimate::Begin(bigtime_t nowUs, int64 positionUs) {
  ForgetAnswers();
  fBeganUs = fBaseAtUs = fChangedAtUs = nowUs;
  fBaseUs = static_cast<double>(Bounded(static_cast<double>(positionUs)));
}

void TPositionEstimate::SetPlaying(bigtime_t nowUs, bool isPlaying) {
  if (isPlaying == fIsPlaying) return;
  const int64 positionUs = PositionUs(nowUs);
  fIsPlaying = isPlaying;
  Begin(nowUs, positionUs);
}

void TPositionEstimate::SetRate(bigtime_t nowUs, double rate) {
  if (!(rate > 0) || rate == fRate) return;
  const int64 positionUs = PositionUs(nowUs);
  fRate = rate;
  Begin(nowUs, positionUs);
}

void TPositionEstimate::Take(const TPositionAnswer& answer) {
  if (answer.askedUs < fBeganUs) return;
  const int64 positionUs = Bounded(static_cast<double>(answer.positionUs));
  const bigtime_t atUs = answer.askedUs + (answer.answeredUs - answer.askedUs) / 2;
  if (!fIsPlaying) return TakePaused(positionUs);
  ++fAsked;
  const bool isFirst = !fLastUs;
  const bool isSame = fLastUs == positionUs;
  if (isSame) {
    TakeSame(answer);
  } else if (isFirst && fLines.empty()) {
    // Not known yet whether it moves. Right after a seek the answer may still be from before it.
    fChangedAtUs = atUs;
    IsJump(atUs, positionUs);
  } else if (!IsJump(atUs, positionUs) || fLines.empty()) {
    if (answer.answeredUs - answer.askedUs <= kSlowUs || fLines.empty()) TakeMoved(atUs, positionUs);
  }
  fLastUs = positionUs;
  fLastAtUs = atUs;
  if (fAsked >= kMostOfBurst) EndBurst(atUs, false);
}

/** Whole seconds are less precise than the estimate from when it played. */
void TPositionEstimate::TakePaused(int64 positionUs) {
  const bool isWholeSecond = positionUs % 1000000 == 0;
  const double aheadUs = fBaseUs - static_cast<double>(positionUs);
  if (isWholeSecond && aheadUs >= 0 && aheadUs < 1e6) return;
  fBaseUs = static_cast<double>(positionUs);
}

void TPositionEstimate::TakeSame(const TPositionAnswer& answer) {
  if (answer.answeredUs - fChangedAtUs < kStalledAfterUs) return;
  fIsStalled = true;
  fLines.clear();
  fBaseUs = static_cast<double>(*fLastUs);
}

void TPositionEstimate::TakeMoved(bigtime_t atUs, int64 positionUs) {
  const bigtime_t gapUs = atUs - fLastAtUs;
  const bool isSharp = gapUs <= 3 * kBurstEveryUs;
  if (isSharp && fLastUs && positionUs > *fLastUs) fStepUs = std::min(positionUs - *fLastUs, kLargestStepUs);
  fIsStalled = false;
  fChangedAtUs = atUs;
  // A stale sample is only a lower bound for the position.
  const double origin = OriginOf(atUs, positionUs);
  if (isSharp || fLines.empty() || origin > fBaseUs) NoteLine(origin);
  if (isSharp && fAsked >= kFewestOfBurst) EndBurst(atUs, true);
}

/** True for an answer far from the estimate; a second one that agrees with it is taken for a seek. */
bool TPositionEstimate::IsJump(bigtime_t atUs, int64 positionUs) {
  const int64 aheadUs = positionUs - PositionUs(atUs);
  const int64 behindUs = kJumpUs + (fStepUs > 0 ? fStepUs : kLargestStepUs);
  if (aheadUs <= kJumpUs && aheadUs >= -behindUs) {
    fJumpLine.reset();
    return false;
  }
  const double origin = OriginOf(atUs, positionUs);
  const bool isConfirmed = fJumpLine && std::abs(*fJumpLine - origin) < static_cast<double>(behindUs);
  if (isConfirmed) Begin(atUs, positionUs);
  fJumpLine = origin;
  return true;
}

void TPositionEstimate::NoteLine(double originUs) {
  if (!fBurstHasBest) {
    fLines.push_back(originUs);
    if (fLines.size() > kLines) fLines.pop_front();
    fBurstBest = originUs;
    fBurstHasBest = true;
  }
  fBurstBest = std::max(fBurstBest, originUs);
  fLines.back() = fBurstBest;
  FollowLines();
}

void TPositionEstimate::FollowLines() {
  // The newest lines are all behind the older ones: a small seek back, or slower than the reported rate.
  if (fLines.size() > kNewLines) {
    const auto newest = fLines.end() - static_cast<std::ptrdiff_t>(kNewLines);
    const auto [least, most] = std::minmax_element(newest, fLines.end());
    const double oldMost = *std::max_element(fLines.begin(), newest);
    if (*most < oldMost - std::max(kMovedUs, 2 * (*most - *least))) fLines.erase(fLines.begin(), newest);
  }
  std::vector<double> lines(fLines.begin(), fLines.end());
  const size_t chosen = lines.size() >= kEnoughLines ? 1 : 0;
  std::nth_element(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(chosen), lines.end(), std::greater<>());
  fBaseAtUs = 0;
  fBaseUs = lines[chosen];
}

void TPositionEstimate::EndBurst(bigtime_t nowUs, bool sawChange) {
  fAsked = 0;
  fBurstHasBest = false;
  fNextBurstUs = nowUs + (fLines.size() < kEnoughLines ? kFirstPauseUs : kLaterPauseUs);
  if (!sawChange || fStepUs < kForeseeableStepUs) return;
  const auto periodUs = std::max<bigtime_t>(1, std::llround(static_cast<double>(fStepUs) / fRate));
  const bigtime_t periods = (fNextBurstUs - nowUs + kBeforeChangeUs + periodUs - 1) / periodUs;
  fNextBurstUs = nowUs + periods * periodUs - kBeforeChangeUs;
}

bigtime_t TPositionEstimate::NextQuestionUs(bigtime_t nowUs) const {
  if (!fIsPlaying) return nowUs + kIdleEveryUs;
  if (fIsStalled) return nowUs + kFirstPauseUs;
  return std::max(nowUs + kBurstEveryUs, fNextBurstUs);
}
