#include "player/list/tag_fields.h"

#include "platform/app/message.h"

void add_tags(BMessage* message, const TSongTags& tags) {
  message->AddString("title", tags.title);
  message->AddString("artist", tags.artist);
  message->AddInt32("durationMs", tags.durationMs);
  message->AddString("album", tags.album);
  message->AddInt32("track", tags.track);
}

TSongTags tags_in(const BMessage& message, int32 number) {
  TSongTags tags;
  tags.title = message.GetString("title", {}, number);
  tags.artist = message.GetString("artist", {}, number);
  tags.durationMs = message.GetInt32("durationMs", tags.durationMs, number);
  tags.album = message.GetString("album", {}, number);
  tags.track = message.GetInt32("track", tags.track, number);
  return tags;
}
