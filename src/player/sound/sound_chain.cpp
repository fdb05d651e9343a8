#include "player/sound/sound_chain.h"

#include "platform/support/cut_text.h"
#include "platform/support/log.h"
#include "player/sound/click_filter.h"
#include "player/sound/mpv_library.h"
#include "player/sound/sound_filters.h"
#include "player/sound/speed_bias.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace {

/** The library's own time stretching is off by up to 14 ms, audibly; the filter's offset is constant. */
constexpr const char* kStretchFilter = "rubberband";

constexpr const char* kDevice = "audio-device";
constexpr const char* kDefaultDevice = "auto";
constexpr int kMostDevices = 100;

std::string text_in(const mpv_node_list& map, std::string_view key) {
  for (int i = 0; i < map.num; ++i) {
    if (map.keys[i] == key && map.values[i].format == MPV_FORMAT_STRING)
      return std::string(cut_text(map.values[i].u.string));
  }
  return {};
}

std::vector<TSoundDevice> devices_in(const mpv_node& list) {
  std::vector<TSoundDevice> devices;
  if (list.format != MPV_FORMAT_NODE_ARRAY) return devices;
  for (int i = 0; i < std::min(list.u.list->num, kMostDevices); ++i) {
    const mpv_node& entry = list.u.list->values[i];
    if (entry.format != MPV_FORMAT_NODE_MAP) continue;
    devices.push_back({text_in(*entry.u.list, "name"), text_in(*entry.u.list, "description")});
  }
  return devices;
}

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
  if (choices.device != before.device) {
    fIsDeviceLost = false;
    SetText(kDevice, choices.device.empty() ? kDefaultDevice : choices.device);
  }
  UpdateFilters();
}

void TSoundChain::SetClicks(const std::vector<int32>& timesMs) {
  fClicks = click_filter(timesMs);
  UpdateFilters();
}

std::vector<TSoundDevice> TSoundChain::Devices() const {
  mpv_node list{};
  if (mpv_library()->get_property(fMpv, "audio-device-list", MPV_FORMAT_NODE, &list) < 0) return {};
  const std::vector<TSoundDevice> all = devices_in(list);
  mpv_library()->free_node_contents(&list);
  for (const char* const output : {"pulse/", "pipewire/", "alsa/"}) {
    std::vector<TSoundDevice> devices = all;
    std::erase_if(devices, [output](const TSoundDevice& device) { return !device.name.starts_with(output); });
    if (!devices.empty()) return devices;
  }
  return {};
}

bool TSoundChain::UseDefaultDevice() {
  if (fChoices.device.empty() || std::exchange(fIsDeviceLost, true)) return false;
  SetText(kDevice, kDefaultDevice);
  return true;
}

void TSoundChain::RetryDevice() {
  if (!fIsDeviceLost) return;
  const std::vector<TSoundDevice> devices = Devices();
  if (std::ranges::find(devices, fChoices.device, &TSoundDevice::name) == devices.end()) return;
  fIsDeviceLost = false;
  SetText(kDevice, fChoices.device);
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
