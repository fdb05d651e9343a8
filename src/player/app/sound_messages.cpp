#include "player/app/sound_messages.h"

#include "platform/app/message.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"

namespace {

BMessage about(int64 load, uint32 what) {
  BMessage message(what);
  message.AddInt64("load", load);
  return message;
}

} // namespace

void TSoundMessages::Send(const BMessage& message) const {
  fPlayer.SendMessage(&message, BMessenger(), 0);
}

void TSoundMessages::SongLoaded(int64 load, const TSongTags& tags) {
  BMessage message = about(load, kMsgSongLoaded);
  add_tags(&message, tags);
  Send(message);
}

void TSoundMessages::SongEnded(int64 load) {
  Send(about(load, kMsgSongEnded));
}

void TSoundMessages::SongJoined(int64 load, int64 next, int32 endedMs) {
  BMessage message = about(load, kMsgSongJoined);
  message.AddInt64("next", next);
  message.AddInt32("endedMs", endedMs);
  Send(message);
}

void TSoundMessages::SongFailed(int64 load, const std::string& reason) {
  BMessage message = about(load, kMsgSongFailed);
  message.AddString("reason", reason);
  Send(message);
}

void TSoundMessages::PartEnded(int64 part) {
  BMessage message(kMsgPartEnded);
  message.AddInt64("part", part);
  Send(message);
}

void TSoundMessages::OutputChanged(bool isSilent) {
  BMessage message(kMsgOutputChanged);
  message.AddBool("silent", isSilent);
  Send(message);
}

void TSoundMessages::DevicesFound(const std::vector<TSoundDevice>& devices) {
  BMessage message(kMsgDevices);
  for (const TSoundDevice& device : devices) {
    message.AddString("name", device.name);
    message.AddString("description", device.description);
  }
  Send(message);
}

void TSoundMessages::DeviceLost(const std::string& device) {
  BMessage message(kMsgDeviceLost);
  message.AddString("device", device);
  Send(message);
}

void TSoundMessages::DeviceReturned(const std::string& device) {
  BMessage message(kMsgDeviceReturned);
  message.AddString("device", device);
  Send(message);
}
