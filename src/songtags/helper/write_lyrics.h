#pragma once

#include "songtags/song_lyrics.h"

#include <tiostream.h>

/** Replaces the lyrics in a song; all other tags and the sound stay. False, with the stream in any state, if the song
   is damaged or in a form in which that cannot be done. */
[[nodiscard]] bool write_lyrics(TagLib::IOStream* stream, const std::string& text);
