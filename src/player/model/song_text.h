#pragma once

#include "player/model/playlist.h"
#include "player/model/song_tags.h"

#include <string>
#include <string_view>

/** Why what has this path is no song: it is missing, a folder, a pipe or a device; empty for a regular file. Never
   opens it, which can block. */
std::string fault_of_kind(const std::string& path);

/** Why a file cannot be played, where it says so itself: its kind, empty, not to be read; else what the audio library
    said. */
std::string fault_of_file(const std::string& path, const std::string& librarySays);

/** A line for a song that ended at this moment, well before the end it names, as a file that was cut off does; empty
    for any other. */
std::string early_end(const TSong& song, int32 positionMs);

/** Of a tag at most 1 KB (platform/support/cut_text.h), without line ends and other control characters: a blank in the
    place of each row of them. What is not UTF-8 becomes U+FFFD. */
std::string clean_text(std::string_view text);

/** Cleaned; a song that does not name its title keeps that of its file. */
void take_tags(const TSongTags& tags, TSong* song);

/** "3:07"; hours in front where there are any. */
std::string clock_text(int32 positionMs);
