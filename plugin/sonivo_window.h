#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

class BWindow;

/** The player's window: the first of this process whose title begins with "Sonivo". 0 when found, else -1 and the
    output untouched. */
status_t get_sonivo_window(BWindow** window);
status_t get_sonivo_win_frame(BRect* frame);
status_t get_sonivo_win_workspaces(uint32* workspaces);
