#pragma once

#include "player/model/playlist.h"

#include <vector>

/** What the playlist is sorted by; equal songs by album, track, title and path. */
enum class TSortKey : int32 { kTitle, kArtist, kAlbum, kDuration, kPath, kTrack };
/** Instead of a key: back to the order before the list was sorted. */
inline constexpr int32 kSortAsBefore = -1;

struct TSongOrder {
  TSortKey key = TSortKey::kTitle;
  bool isDescending = false; // by the key; equal songs are in ascending order also then
  bool operator==(const TSongOrder&) const = default;
};

/** The songs' ids in that order. Texts are compared as the user's language does, numbers in them by their value; songs
    without the text or the number come last. Pure. */
std::vector<int64> sorted_ids(const TSongs& songs, const TSongOrder& order);
