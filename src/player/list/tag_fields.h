#pragma once

#include "player/model/song_tags.h"

class BMessage;

/** In a message: strings "title" and "artist", int32 "durationMs", of one song or of several in a row. */
void add_tags(BMessage* message, const TSongTags& tags);
/** What the message does not say is empty. */
TSongTags tags_in(const BMessage& message, int32 number = 0);
