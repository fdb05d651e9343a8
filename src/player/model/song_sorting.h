#pragma once

#include "player/model/playlist.h"

#include <vector>

/** What the playlist is sorted by; equal songs by album, track, title and path. */
enum class TSortKey : int32 { kTitle, kArtist, kAlbum, kDuration, kPath };

/** The songs' ids in that order. Texts are compared as the user's language does, numbers in them by their value; songs
    without the text come last. Pure. */
std::vector<int64> sorted_ids(const TSongs& songs, TSortKey key);
