#pragma once

#include "platform/support/types.h"

#include <optional>

class Sonivo_FrontEnd;

/** The time for a new tag: the play position of this moment, or of the moment when a key event happened, with the
    offset of the settings. Blocks for 20 ms, so that the player can answer. */
int32 stamp_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> whenUs = {});
