#pragma once

#include "lyrics/lines_change.h"
#include "lyrics/proposal.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

/** Which tags of the lyrics can be proposed other times, and their change. Times are those of the song. Pure: any
    thread. */

/** Row and time of each line with a single tag that shows hundredths. */
std::vector<std::pair<int32, int32>> times_to_improve(std::span<const std::string> lines, long offsetMs);

/** Gives the lines their new times, as near as a tag can show them; the words of a line move with it. Lines that have
   got another time since are left alone; `count` is set to the number of the others. */
TLinesChange lines_improved(std::span<const std::string> lines, std::span<const TProposedTag> accepted, long offsetMs,
                            int32* count);

/** Rounded as lines_improved does. */
long improved_tag_ms(const TProposedTag& tag, long offsetMs);
