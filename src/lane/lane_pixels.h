#pragma once

#include "lane/lane_colors.h"
#include "lane/lane_range.h"
#include "platform/interface/pixel_view.h"

class TSongSound;

/** How the sound is drawn. */
enum class TLaneLook { kSpectrogram, kWave };

/** The sound of the range. The first `labelHeight` rows, and what has not been read of the song, have the colour of the
    background. `sound` may be null. Pure: any thread. */
pixel_image sound_pixels(const TSongSound* sound, const TLaneRange& range, TLaneLook look, const TLaneColors& colors,
                         int32 width, int32 height, int32 labelHeight);
