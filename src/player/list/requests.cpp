#include "player/list/requests.h"

#include "platform/app/message.h"
#include "player/list/tag_asker.h"
#include "player/list/tag_fields.h"
#include "player/model/player_messages.h"

namespace {

void send(const BMessenger& player, const BMessage& message) {
  player.SendMessage(&message, BMessenger(), 0);
}

} // namespace

void ask(const BMessenger& player, uint32 request) {
  send(player, BMessage(request));
}

void ask(const BMessenger& player, uint32 request, const char* name, int32 value) {
  BMessage message(request);
  message.AddInt32(name, value);
  send(player, message);
}

void ask_about_songs(const BMessenger& player, uint32 request, const std::vector<int64>& ids, int32 before) {
  if (ids.empty()) return;
  BMessage message(request);
  for (const int64 id : ids) message.AddInt64("id", id);
  message.AddInt32("before", before);
  send(player, message);
}

void ask_about_paths(const BMessenger& player, uint32 request, const std::vector<std::string>& paths, int32 before) {
  if (paths.empty()) return;
  BMessage message(request);
  for (const std::string& path : paths) message.AddString("path", path);
  message.AddInt32("before", before);
  send(player, message);
}

void send_tags(const BMessenger& player, const std::vector<TReadTags>& found) {
  BMessage message(kMsgTagsFound);
  for (const TReadTags& one : found) {
    message.AddInt64("id", one.id);
    add_tags(&message, one.tags);
  }
  send(player, message);
}

void send_cover(const BMessenger& player, const std::string& song, const std::string& coverFile) {
  BMessage message(kMsgCover);
  message.AddString("path", song);
  message.AddString("file", coverFile);
  send(player, message);
}
