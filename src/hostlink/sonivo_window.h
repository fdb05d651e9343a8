#pragma once

#include "platform/support/geometry.h"
#include "platform/support/types.h"

#include <functional>

class BWindow;

/** The player's window: the first of this process whose title begins with "Sonivo". 0 when found, else -1 and the
    output untouched. The window may end as soon as it is returned: its address is for comparing. */
status_t get_sonivo_window(BWindow** window);
/** The same with the window locked, for as long as `use` runs. */
status_t use_sonivo_window(const std::function<void(BWindow*)>& use);
status_t get_sonivo_win_frame(BRect* frame);
status_t get_sonivo_win_workspaces(uint32* workspaces);
