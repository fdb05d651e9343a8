#pragma once

#include "player/model/playlist.h"

#include <string>
#include <string_view>

/** A longer list is not read. */
inline constexpr size_t kLargestListBytes = 64 << 20;
/** Lines beyond this are not read. */
inline constexpr size_t kMostListLines = 1000000;

/** The songs that a list in the m3u form names; `folder` is where the list lies, which its relative paths begin from.
    Text that is no UTF-8 is taken as Latin 1. Titles and lengths are those of its #EXTINF lines, where it has them.
    Entries that are not the address of a song are kept as failed (player/song_address.h). */
TSongs parse_m3u(std::string_view bytes, const std::string& folder);

/** The same the other way, in UTF-8; songs in or below `folder` are named relative to it. */
std::string m3u_text(const TSongs& songs, const std::string& folder);
