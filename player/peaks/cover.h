#pragma once

#include "player/peaks/av_file.h"
#include "player/peaks/song_picture.h"

/** Puts the picture in the file into `picture`, no larger than a cover may be. False when there is none. */
bool read_cover(AVFormatContext* input, TSongPicture* picture);
/** The same from a picture in the song's folder that is named as covers are. */
bool read_cover_beside(const std::string& song, TSongPicture* picture);
