#pragma once

#include "platform/support/geometry.h"

/** Where a view goes whose frame was `frame` while its parent measured `oldSize`, now that it measures `newSize`.
    Sizes are width and height as rectangles have them. Both sides of the thread border use it, so that they agree
   without asking. */
BRect follow_parent(BRect frame, uint32 resizingMode, BPoint oldSize, BPoint newSize);
