#pragma once

#include "player/model/song_tags.h"

class BMessage;

/** Message fields: strings "title" and "artist", int32 "durationMs", of one or several songs. */
void add_tags(BMessage* message, const TSongTags& tags);
/** Missing fields are left empty. */
TSongTags tags_in(const BMessage& message, int32 number = 0);
