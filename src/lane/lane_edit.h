#pragma once

#include "lyrics/lines_change.h"
#include "lyrics/stamp.h"

#include <span>
#include <string>

/** A tag that gets another time. Times are those of the song. */
struct TLaneMove {
  int32 row = 0;
  size_t tag = 0; // of the line's well-formed tags
  int32 fromMs = 0;
  int32 toMs = 0;
  bool movesLater = false; // all tags of the lyrics from that time on move with it

  friend bool operator==(const TLaneMove&, const TLaneMove&) = default;
};

/** The lines that the move changes. Tags keep their form; of those that move along, the ones without hundredths move by
    whole seconds. Nothing is changed for a tag that is not there. Pure: any thread. */
TLinesChange lines_moved(std::span<const std::string> lines, const TLaneMove& move, long offsetMs);

/** The line with its first tag, at the nearest time that its form can show. Nothing is changed for a line that begins
    with a tag. Pure: any thread. */
TLinesChange line_tagged(std::span<const std::string> lines, int32 row, long tagMs, TTagForm form);
