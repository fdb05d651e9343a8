#pragma once

#include "player/peaks/song_file.h"
#include "player/pictures/song_picture.h"

/** What a file gives. */
struct TSeenSong {
  TSongPicture picture;
  std::string coverJpeg; // the cover once more, larger, as a file that any program can show
};

/** Decodes the whole song and its cover: that in the file, else one that was found next to it. Empty for what is no
 * song.
 */
TSeenSong read_song(const TSongFile& file);
/** The same in the sandbox of player/peaks/confined_work.h. */
TSeenSong read_song_confined(const TSongFile& file);
