#pragma once

#include "platform/interface/font.h"

struct TPrefValues;

/** The font that the settings ask for, in all that they name; the rest is of the given one. */
BFont lyrics_font(BFont font, const TPrefValues& look);
