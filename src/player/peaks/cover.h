#pragma once

#include "platform/kernel/unique_fd.h"
#include "player/peaks/av_file.h"
#include "player/pictures/song_picture.h"

#include <vector>

/** The picture in the song's file, else the first of these files that is a picture; null when there is none. */
TFrame read_cover(AVFormatContext* input, const std::vector<UniqueFd>& files);
/** Puts it into `picture`, no larger than a cover may be there. */
void draw_cover(const AVFrame* cover, TSongPicture* picture);
/** A file of its own that any program can show; empty when it cannot be made. */
std::string cover_jpeg(const AVFrame* cover);
