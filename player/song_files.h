#pragma once

#include "player/playlist.h"

#include <string>
#include <vector>

/** What a path gave, and what of it could not be taken, a line each. */
struct TGathered {
  TSongs songs;
  std::vector<std::string> faults;
};

/** A file is taken as it is; a folder gives its audio files and those of its folders, in byte order; a list of songs
    gives its songs and those of the lists it names. Songs of a list that are not there are kept, as failed. Reads no
    sound file. Any thread. */
TGathered gather_songs(const std::string& path);

/** True for names that end like an audio file's. */
bool is_audio_name(const std::string& path);
/** True for names that end like a list of songs. */
bool is_list_name(const std::string& path);
