#include "player/sound/output_device.h"

#include "player/sound/mpv_library.h"

#include "platform/support/cut_text.h"
#include "platform/support/log.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

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

} // namespace

void TOutputDevice::Choose(const std::string& device) {
  if (device == fDevice) return;
  fDevice = device;
  fDescription.clear();
  fState = TState::kInUse;
  fIsReplaced = false;
  Set(device.empty() ? kDefaultDevice : device);
}

std::vector<TSoundDevice> TOutputDevice::Devices() const {
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

TOutputDevice::TNews TOutputDevice::ListChanged(const mpv_node& list) {
  if (!IsChosen()) return TNews::kNone;
  const std::vector<TSoundDevice> devices = devices_in(list);
  const auto found = std::ranges::find(devices, fDevice, &TSoundDevice::name);
  if (found != devices.end()) {
    fDescription = found->description;
    return fState == TState::kLost ? TNews::kListed : TNews::kNone;
  }
  return std::exchange(fState, TState::kLost) == TState::kLost ? TNews::kNone : TNews::kLost;
}

bool TOutputDevice::UseDefault() {
  if (!IsChosen() || std::exchange(fIsReplaced, true)) return false;
  Set(kDefaultDevice);
  return std::exchange(fState, TState::kLost) != TState::kLost;
}

/** The server may have moved the sound to another device without the library: then only a new connection helps. */
bool TOutputDevice::Retry() {
  if (fState != TState::kLost) return false;
  const std::vector<TSoundDevice> devices = Devices();
  if (std::ranges::find(devices, fDevice, &TSoundDevice::name) == devices.end()) return false;
  fState = TState::kRetried;
  if (std::exchange(fIsReplaced, false)) {
    Set(fDevice);
  } else {
    const char* reload[] = {"ao-reload", nullptr};
    mpv_library()->command_async(fMpv, 0, reload);
  }
  return true;
}

bool TOutputDevice::TakeReturn() {
  if (fState != TState::kRetried) return false;
  fState = TState::kInUse;
  return true;
}

void TOutputDevice::Set(const std::string& device) {
  if (mpv_library()->set_property_string(fMpv, kDevice, device.c_str()) < 0)
    log_error("audio", "the audio library refuses the device " + device);
}
