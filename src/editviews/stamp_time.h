#pragma once

#include "platform/support/types.h"

#include <optional>

class Sonivo_FrontEnd;

/** The time for a new tag: the play position that the player reports, with the offset of the settings. The player is
    asked for the position of this moment; if the key event has waited long, for that of its own time, which some
   players do not know. Blocks for 20 ms, so that the player can answer. */
int32 stamp_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> keyUs);

/** The same for a word, which always gets the key event's own time: where the player has not answered for it, the
    position that it reports is corrected by how long the event has waited. */
int32 word_time_ms(Sonivo_FrontEnd* frontEnd, std::optional<bigtime_t> keyUs);
