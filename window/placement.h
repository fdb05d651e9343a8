#pragma once

#include "platform/support/geometry.h"

/** A frame of that size beside `neighbour`: to its right where the screen has room, else to its left, else over it;
    always wholly on the screen as far as that is large enough. */
BRect frame_beside(const BRect& neighbour, float width, float height, const BRect& screen);
