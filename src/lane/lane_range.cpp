#include "lane/lane_range.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr int32 kFarthestMs = 100000000;
/** A page begins that part of its length before the head of play. */
constexpr int32 kLeadPart = 10;

TLaneRange at(double fromMs, int32 lengthMs) {
  const auto from = static_cast<int32>(std::clamp(std::round(fromMs), -double{kFarthestMs}, double{kFarthestMs}));
  return {from, from + lengthMs};
}

} // namespace

double TLaneRange::XOf(int32 timeMs, double width) const {
  return (double{static_cast<double>(timeMs)} - fromMs) * width / std::max(Length(), 1);
}

int32 TLaneRange::TimeAt(double x, double width) const {
  const double timeMs = fromMs + x * Length() / std::max(width, 1.0);
  return static_cast<int32>(std::clamp(std::round(timeMs), -double{kFarthestMs}, double{kFarthestMs}));
}

int32 TLaneRange::Duration(double pixels, double width) const {
  return static_cast<int32>(std::lround(pixels * Length() / std::max(width, 1.0)));
}

TLaneRange zoomed(const TLaneRange& range, double factor, int32 aboutMs) {
  const int32 longest = std::max(kLongestLaneMs, range.Length());
  const double length = std::clamp(range.Length() * factor, double{kShortestLaneMs}, static_cast<double>(longest));
  const double scale = length / std::max(range.Length(), 1);
  return at(aboutMs + (static_cast<double>(range.fromMs) - aboutMs) * scale, static_cast<int32>(std::lround(length)));
}

TLaneRange turned_to(const TLaneRange& range, int32 timeMs) {
  return at(static_cast<double>(timeMs) - range.Length() / kLeadPart, range.Length());
}

TLaneRange moved_by(const TLaneRange& range, int32 stepMs) {
  return at(static_cast<double>(range.fromMs) + stepMs, range.Length());
}
