#include "demo/locate_sound.h"

#include "demo/sink_recorder.h"

#include <algorithm>
#include <cmath>

namespace {

float product(const float* a, const float* b, size_t count) {
  float sums[8] = {};
  for (size_t i = 0; i + 8 <= count; i += 8)
    for (size_t lane = 0; lane < 8; ++lane) sums[lane] += a[i + lane] * b[i + lane];
  float total = 0;
  for (const float sum : sums) total += sum;
  return total;
}

/** Normalized correlation of the window and the track from sample `at` on. */
double likeness(std::span<const float> track, std::span<const float> window, double windowPower, ptrdiff_t at) {
  const float* piece = track.data() + at;
  const double power = product(piece, piece, window.size());
  return power > 0 ? product(piece, window.data(), window.size()) / std::sqrt(power * windowPower) : 0;
}

} // namespace

std::optional<TPlace> locate(std::span<const float> track, std::span<const float> heard, size_t middle,
                             const TSearch& search) {
  const size_t half = search.windowSize / 2;
  if (middle < half || middle + half > heard.size()) return std::nullopt;
  const auto window = heard.subspan(middle - half, half * 2);
  const double power = product(window.data(), window.data(), window.size());
  if (power < 1e-5 * static_cast<double>(window.size())) return std::nullopt;

  const double first = (search.aroundSec - search.rangeSec) * TSinkRecorder::kRate - static_cast<double>(half);
  const double last = (search.aroundSec + search.rangeSec) * TSinkRecorder::kRate - static_cast<double>(half);
  const auto end = static_cast<ptrdiff_t>(track.size() - window.size());
  TPlace best{0, -1};
  for (auto at = std::max<ptrdiff_t>(0, std::lround(first)); at <= std::min<ptrdiff_t>(end, std::lround(last)); ++at) {
    const double like = likeness(track, window, power, at);
    if (like > best.likeness)
      best = {static_cast<double>(at + static_cast<ptrdiff_t>(half)) / TSinkRecorder::kRate, like};
  }
  return best.likeness > 0 ? std::optional(best) : std::nullopt;
}
