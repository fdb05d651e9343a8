#pragma once

#include "platform/support/geometry.h"

/** The frame of a view after its parent was resized from `oldSize` to `newSize`; `frame` is the one before. Sizes are
    BRect::Width and Height. Views and their widgets both use it, so that they agree without asking each other. */
BRect follow_parent(BRect frame, uint32 resizingMode, BPoint oldSize, BPoint newSize);
