#include "player/sound/sound_chain.h"

#include "platform/support/log.h"
#include "player/sound/click_filter.h"
#include "player/sound/mpv_library.h"
#include "player/sound/sound_filters.h"
#include "player/sound/speed_bias.h"

#include <initializer_list>
#include <utility>

namespace {

/** The library's own time stretching is off by up to 14 ms, audibly; the filter's offset is constant. */
constexpr const char* kStretchFilter = "rubberband";

std::string joined(std::initializer_list<std::string> filters) {
  std::string chain;
  for (const std::string& filter : filters) {
    if (!chain.empty() && !filter.empty()) chain += ',';
    chain += filter;
  }
  return chain;
}

const char* library_name(TReplayGain gain) {
  if (gain == TReplayGain::kTrack) return "track";
  return gain == TReplayGain::kAlbum ? "album" : "no";
}

} // namespace

void TSoundChain::Apply(const TSoundChoices& choices) {
  const TSoundChoices before = std::exchange(fChoices, choices);
  if (choices.replayGain != before.replayGain) SetText("replaygain", library_name(choices.replayGain));
  UpdateFilters();
}

void TSoundChain::SetClicks(const std::vector<int32>& timesMs) {
  fClicks = click_filter(timesMs);
  UpdateFilters();
}

double TSoundChain::SetSpeed(double speed) {
  fSpeed = speed;
  UpdateFilters();
  mpv_library()->set_property_async(fMpv, 0, "speed", MPV_FORMAT_DOUBLE, &speed);
  return fHasStretchFilter ? speed_bias_ms(speed) : 0;
}

/** Each filter goes without the others if the library does not have that one. The clicks come first, since they are
    placed by the time in the song, which stretching changes. */
void TSoundChain::UpdateFilters() {
  const std::string effects = sound_filters(fChoices);
  const std::string stretch = fSpeed == 1 ? "" : kStretchFilter;
  const std::string all = joined({fClicks, stretch, effects});
  if (all == fFilters) return;
  fHasStretchFilter = !stretch.empty();
  if (SetFilters(all)) return;
  if (!fClicks.empty() && SetFilters(joined({stretch, effects})))
    return log_error("audio", "the audio library cannot add clicks: they are off");
  if (!effects.empty() && SetFilters(stretch))
    return log_error("audio", "the audio library has no equalizer or balance: they are off");
  fHasStretchFilter = false;
  if (!stretch.empty()) log_error("audio", "no filter 'rubberband': positions at other speeds are less exact");
  SetFilters(effects);
}

bool TSoundChain::SetFilters(const std::string& filters) {
  const bool isSet = mpv_library()->set_property_string(fMpv, "af", filters.c_str()) >= 0;
  if (isSet) fFilters = filters;
  return isSet;
}

void TSoundChain::SetText(const char* name, const std::string& value) {
  if (mpv_library()->set_property_string(fMpv, name, value.c_str()) < 0)
    log_error("audio", std::string("the audio library refuses ") + name + '=' + value);
}
