#pragma once

#include "platform/kernel/unique_fd.h"
#include "player/peaks/av_file.h"
#include "player/pictures/song_picture.h"

#include <vector>

/** The cover embedded in the song, else the first of these files that is an image; null if there is none. */
TFrame read_cover(AVFormatContext* input, const std::vector<UniqueFd>& files);
/** Stores the cover in `picture`, scaled down to kLargestCover. */
void draw_cover(const AVFrame* cover, TSongPicture* picture);
/** The cover as a JPEG file; empty on failure. */
std::string cover_jpeg(const AVFrame* cover);
