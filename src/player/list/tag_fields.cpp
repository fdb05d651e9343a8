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
  message.FindString("title", number, &tags.title);
  message.FindString("artist", number, &tags.artist);
  message.FindInt32("durationMs", number, &tags.durationMs);
  message.FindString("album", number, &tags.album);
  message.FindInt32("track", number, &tags.track);
  return tags;
}
