#pragma once

#include "player/model/playlist.h"
#include "player/model/song_tags.h"

#include <string>
#include <string_view>

/** Why the path cannot be a song: missing, a folder, a pipe or a device; empty for a regular file. Never opens the
    file, which could block. */
std::string file_type_error(const std::string& path);

/** Why a file cannot be played: its type, its size or its permissions if these explain it, else the audio library's
    own message. */
std::string file_error(const std::string& path, const std::string& librarySays);

/** A message for a song that ended well before its nominal duration, as a truncated file does; empty for any other. */
std::string early_end(const TSong& song, int32 positionMs);

/** Sanitizes a tag: at most 1 KB (platform/support/cut_text.h); each run of line ends and control characters becomes a
    blank, invalid UTF-8 becomes U+FFFD. */
std::string clean_text(std::string_view text);

/** Stores the sanitized tags; without a title the song keeps its own. */
void take_tags(const TSongTags& tags, TSong* song);

/** "3:07", or "1:03:07" from an hour on. */
std::string clock_text(int32 positionMs);
