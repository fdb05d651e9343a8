#pragma once

#include "player/peaks/song_picture.h"

/** Decodes the whole song and its cover: that in the file, else one that lies beside it. Empty for what is no song. */
TSongPicture read_song_picture(const std::string& path);
