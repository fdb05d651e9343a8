#include "player/sound/click_filter.h"

#include <algorithm>
#include <span>

namespace {

std::string in_seconds(int32 ms) {
  std::string fraction = std::to_string(ms % 1000);
  fraction.insert(0, 3 - fraction.size(), '0');
  return std::to_string(ms / 1000) + '.' + fraction;
}

/** The latest of the times up to `t`, of which the first is one: a binary search as nested conditions. */
std::string latest(std::span<const int32> timesMs) {
  if (timesMs.size() == 1) return in_seconds(timesMs.front());
  const size_t half = timesMs.size() / 2;
  return "if(lt(t," + in_seconds(timesMs[half]) + ")," + latest(timesMs.first(half)) + ',' +
         latest(timesMs.subspan(half)) + ')';
}

/** 1.5 kHz, fading within some milliseconds; variable 0 is the time since the click has begun. */
constexpr const char* kClick = "if(lt(ld(0),0.03),0.4*exp(-200*ld(0))*sin(9424.8*ld(0)),0)";

} // namespace

std::string click_filter(const std::vector<int32>& timesMs) {
  const auto first = std::ranges::find_if(timesMs, [](int32 timeMs) { return timeMs >= 0; });
  const std::span<const int32> times(first, timesMs.end());
  if (times.empty()) return {};
  const std::string since = "if(lt(t," + in_seconds(times.front()) + "),1,t-" +
                            latest(times.first(std::min(times.size(), kMostClicks))) + ')';
  return "lavfi=[aeval=exprs='0*st(0," + since + ")+val(ch)+" + kClick + "':channel_layout=same]";
}
