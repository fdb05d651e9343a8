#pragma once

#include "player/peaks/song_picture.h"

/** What a file gives. */
struct TSeenSong {
  TSongPicture picture;
  std::string coverJpeg; // the cover once more, larger, as a file that any program can show
};

/** Decodes the whole song and its cover: that in the file, else one that lies beside it. Empty for what is no song. */
TSeenSong read_song(const std::string& path);
