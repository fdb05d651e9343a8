#pragma once

#include <string_view>

/** What a dropped file is for, by its name. kSong also stands for folders, playlists and names without a known ending:
    whether they can be played turns out later. */
enum class TDroppedKind { kSong, kLyrics, kOther };

/** Pure: any thread. */
TDroppedKind file_kind(std::string_view path);
