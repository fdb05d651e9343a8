#pragma once

#include "platform/support/geometry.h"

/** The part of the screen at `where` (the nearest one) that windows may use. Waits for the display. */
BRect screen_frame(BPoint where);
