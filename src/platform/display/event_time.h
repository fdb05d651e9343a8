#pragma once

#include "platform/support/types.h"

class QInputEvent;

namespace display {

/** When the event happened, by the clock of `system_time`: as the window system tells it, else now. */
bigtime_t time_of(const QInputEvent& event);

/** The same for a time stamp in ms, of which window systems send the lowest 32 bits. Pure: any thread. */
bigtime_t time_of_stamp(uint64 stampMs, bigtime_t nowUs);

} // namespace display
