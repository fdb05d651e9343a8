#pragma once

#include "player/playlist.h"
#include "player/song_tags.h"

#include <string>
#include <string_view>

/** Why a file cannot be played, where it says so itself: gone, a folder, empty, not to be read; else what the audio
    library said. */
std::string fault_of_file(const std::string& path, const std::string& librarySays);

/** A line for a song that ended at this moment, well before the end it names, as a file that was cut off does; empty
    for any other. */
std::string early_end(const TSong& song, int32 positionMs);

/** Without the line ends and other control characters that a tag may hold: a blank in the place of each row of them.
    What is no UTF-8 becomes the sign for that. */
std::string clean_text(std::string_view text);

/** Cleaned; a song that does not name its title keeps that of its file. */
void take_tags(const TSongTags& tags, TSong* song);

/** "3:07"; hours in front where there are any. */
std::string clock_text(int32 positionMs);
