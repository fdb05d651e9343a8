#pragma once

#include "platform/support/geometry.h"

class BWindow;

/** A frame of that size to the right of the neighbour where the screen has room, else to its left, else over it; always
    wholly on the screen, as far as it fits. */
BRect frame_beside(const BRect& neighbour, float width, float height, const BRect& screen);
/** The user can take hold of a window there: some of its upper edge is on a screen. */
bool is_in_sight(const BRect& frame);
/** Moves the window, which is locked, there. */
void move_beside(BWindow* window, const BRect& neighbour);
