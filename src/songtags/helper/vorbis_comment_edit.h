#pragma once

#include "songtags/song_lyrics.h"

/** A Vorbis comment without framing, with its lyrics fields replaced. All other fields, the vendor and what follows the
    fields stay byte for byte. Nothing if it is damaged. Pure: any thread. */
std::optional<std::string> edited_vorbis_comment(std::string_view comment, const std::vector<TEmbeddedLyrics>& lyrics);

/** A comment without fields. */
std::string empty_vorbis_comment();
