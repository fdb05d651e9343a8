#pragma once

#include "platform/interface/font.h"

struct TPrefValues;

/** `font` with the family, size and anti-aliasing of the settings. */
BFont lyrics_font(BFont font, const TPrefValues& look);
