#pragma once

#include "player/peaks/song_file.h"
#include "player/pictures/song_picture.h"

struct TSeenSong {
  TSongPicture picture;
  std::string coverJpeg; // the cover, larger, as a JPEG file; empty if there is none
};

/** Decodes the whole song and its cover, embedded or next to it. Empty if it is no song. */
TSeenSong read_song(const TSongFile& file);
/** Does so in a sandbox (confined/confined_work.h). */
TSeenSong read_song_confined(const TSongFile& file);
