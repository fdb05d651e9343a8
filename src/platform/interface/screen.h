#pragma once

#include "platform/support/geometry.h"

/** The available area (without panels) of the screen at `where`, or of the primary one. Any thread; blocks only until
   the display has started. */
BRect screen_frame(BPoint where);
