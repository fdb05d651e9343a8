#pragma once

#include "platform/support/geometry.h"

class BWindow;

/** A frame of that size to the right of the neighbour, else (no room) to its left, else over it. Always entirely on the
    screen if it fits. */
BRect frame_beside(const BRect& neighbour, float width, float height, const BRect& screen);
/** Part of the title bar is on a screen, so that the user can drag the window. */
bool is_in_sight(const BRect& frame);
/** Moves the window to frame_beside. With the window locked. */
void move_beside(BWindow* window, const BRect& neighbour);
