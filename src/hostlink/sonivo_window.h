#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <functional>

class BWindow;

/** The player's window: the first of this process whose title begins with "Sonivo". 0 if found, otherwise -1 and the
    output unchanged. The window may be deleted at any time: only compare its address. */
status_t get_sonivo_window(BWindow** window);
/** Calls `use` with that window locked. */
status_t use_sonivo_window(const std::function<void(BWindow*)>& use);
status_t get_sonivo_win_frame(BRect* frame);
status_t get_sonivo_win_workspaces(uint32* workspaces);
