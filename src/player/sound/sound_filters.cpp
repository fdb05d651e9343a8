#include "player/sound/sound_filters.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

std::string joined(const std::vector<std::string>& filters) {
  std::string text;
  for (const std::string& filter : filters) text += (text.empty() ? "" : ",") + filter;
  return text;
}

/** Biquads one octave wide. What the strongest band adds is taken off before, so that nothing is clipped. */
void add_equalizer(const TSoundChoices& choices, std::vector<std::string>* filters) {
  const int32 loudest = std::ranges::max(choices.bandsDb);
  if (loudest > 0) filters->push_back("volume=-" + std::to_string(loudest) + "dB");
  for (size_t i = 0; i < kBandsHz.size(); ++i) {
    if (choices.bandsDb[i] == 0) continue;
    filters->push_back("equalizer=f=" + std::to_string(kBandsHz[i]) +
                       ":t=o:w=1:g=" + std::to_string(choices.bandsDb[i]));
  }
}

/** Attenuates the other side. */
void add_balance(int32 percent, std::vector<std::string>* filters) {
  char pan[80];
  const int32 left = 100 - std::max(percent, int32{0});
  const int32 right = 100 + std::min(percent, int32{0});
  std::snprintf(pan, sizeof pan, "pan=stereo|c0=%d.%02d*c0|c1=%d.%02d*c1", left / 100, left % 100, right / 100,
                right % 100);
  filters->push_back("aformat=channel_layouts=stereo");
  filters->push_back(pan);
}

} // namespace

std::string sound_filters(const TSoundChoices& choices) {
  std::vector<std::string> filters;
  if (choices.isEqualized) add_equalizer(choices, &filters);
  if (choices.balancePercent != 0) add_balance(choices.balancePercent, &filters);
  return filters.empty() ? std::string() : "lavfi=[" + joined(filters) + "]";
}
