#include "player/sound/speed_bias.h"

#include <algorithm>
#include <iterator>

namespace {

struct TMeasured {
  double speed;
  double biasMs;
};
constexpr TMeasured kMeasured[] = {{0.5, -21.5}, {0.6, -16.3}, {0.67, -12.9}, {0.75, -8.3}, {0.8, -5.5},
                                   {0.9, 0.1},   {1.1, 10.3},  {1.25, 17.4},  {1.5, 29.5},  {2.0, 53.4}};

} // namespace

double speed_bias_ms(double speed) {
  if (speed == 1.0) return 0;
  const auto* above =
      std::find_if(std::begin(kMeasured), std::end(kMeasured), [=](const TMeasured& m) { return m.speed >= speed; });
  // Linear interpolation; outside the measured range, extrapolation from the nearest two.
  above = std::clamp(above, std::begin(kMeasured) + 1, std::end(kMeasured) - 1);
  const TMeasured& below = *(above - 1);
  return below.biasMs + (above->biasMs - below.biasMs) * (speed - below.speed) / (above->speed - below.speed);
}
