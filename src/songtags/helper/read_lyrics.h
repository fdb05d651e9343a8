#pragma once

#include "songtags/song_lyrics.h"

#include <tiostream.h>

/** Reads a song's tags by the tag library. */

/** A song's lyrics, without its state. Longer ones than kMostLyricsBytes are left out. */
TLyricsInSong read_lyrics(TagLib::IOStream* stream);
/** The other tags as one text, to compare two versions of a song. */
std::string read_other_tags(TagLib::IOStream* stream);
