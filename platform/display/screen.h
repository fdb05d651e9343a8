#pragma once

#include "platform/support/geometry.h"

namespace display {

/** The usable part of the screen nearest to `where`. On any thread; waits for the display thread. */
BRect usable_screen(BPoint where);

} // namespace display
