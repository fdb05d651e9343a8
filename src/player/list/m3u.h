#pragma once

#include "player/model/playlist.h"

#include <string>
#include <string_view>

/** A larger file is not read. */
inline constexpr size_t kLargestListBytes = 64 << 20;
/** Lines beyond this are not read. */
inline constexpr size_t kMostListLines = 1000000;

/** Parses a playlist in M3U format. Relative paths are resolved against `folder`, that of the list. Text that is not
    valid UTF-8 is read as Latin 1. Titles and durations come from #EXTINF lines. Entries that are not the address of a
    song are kept, with their error (player/model/song_address.h). */
TSongs parse_m3u(std::string_view bytes, const std::string& folder);

/** Serializes a playlist in M3U format, in UTF-8. Songs in or below `folder` get paths relative to it. */
std::string m3u_text(const TSongs& songs, const std::string& folder);
