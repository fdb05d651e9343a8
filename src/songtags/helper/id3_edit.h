#pragma once

#include "songtags/song_lyrics.h"

/** An ID3v2 tag, header included, with its first USLT frame and its first SYLT frame of lyrics replaced; `tag` is empty
    for a song without one. All other frames stay byte for byte. An extended header, which may hold a checksum, and a
    footer are dropped. Nothing if the tag is damaged. Pure: any thread. */
std::optional<std::string> edited_id3(std::string_view tag, const std::vector<TEmbeddedLyrics>& lyrics);
