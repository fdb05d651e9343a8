#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

/** More are not sounded: the filter's text and the work for each sample grow with them. */
inline constexpr size_t kMostClicks = 5000;

/** An audio filter of the library that adds a short click to the sound at each of these times of the song (ms,
    ascending). It computes each sample from that sample's own time in the song, so the clicks are where the sound is,
    whatever was sought; and it delays nothing, so the position stays exact. Empty without times. Pure. */
std::string click_filter(const std::vector<int32>& timesMs);
