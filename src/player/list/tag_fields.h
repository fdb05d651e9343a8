#pragma once

#include "player/model/song_tags.h"

class BMessage;

/** Message fields: strings "title", "artist" and "album", int32 "durationMs" and "track", of one or several songs. */
void add_tags(BMessage* message, const TSongTags& tags);
/** Missing fields are left empty. */
TSongTags tags_in(const BMessage& message, int32 number = 0);
