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

void TSoundMessages::SongFailed(int64 load, const std::string& reason) {
  BMessage message = about(load, kMsgSongFailed);
  message.AddString("reason", reason);
  Send(message);
}

void TSoundMessages::OutputChanged(bool isSilent) {
  BMessage message(kMsgOutputChanged);
  message.AddBool("silent", isSilent);
  Send(message);
}
