#pragma once

#include "player/peaks/av_file.h"

#include <vector>

/** How loud each part of the song is, 0 to 255, the loudest part 255; empty when there is no sound in the file. What is
    broken in it is passed over. */
std::vector<unsigned char> read_loudness(AVFormatContext* input);

/** The same from how loud short stretches of equal length are: at most `mostParts`, each as loud as its loudest. */
std::vector<unsigned char> scaled_loudness(const std::vector<float>& stretches, size_t mostParts);
