#pragma once

#include "lyrics/song_entry.h"

#include <string>

/** The lyrics file of a song: the song's path with the extension "lrc" when such a file exists, else with "txt",
    existing or not. */
std::string lyrics_fname(SonivoSongEntry entry);
