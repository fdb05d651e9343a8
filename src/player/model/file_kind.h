#pragma once

#include <string_view>

/** What a dropped file is for, by its name. kSong also stands for folders, playlists and names without a known ending:
    whether they can be played turns out later. */
enum class TFileKind { kSong, kLyrics, kOther };

/** Pure: any thread. */
TFileKind file_kind(std::string_view path);
