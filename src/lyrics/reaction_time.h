#pragma once

#include "platform/support/types.h"

#include <deque>
#include <map>
#include <optional>
#include <span>
#include <vector>

/** How late a person's key presses come after what they hear. Pure: no clock, no window; times are in ms, and
    positive is late. */

/** What has been found about the user's stamps, from the tag input view through window and managers to the companion's
    preferences: int32 "LateMs", how late they seem to be; int32 "TmDf", the time offset that they were made with.
    Rarely sent. */
inline constexpr uint32 kMsgStampHint = 'Srth';

/** The median of the values, after those far from the rest were left out. Nothing when fewer than `least` are left, or
    when even these do not agree. */
std::optional<int32> typical_lateness(std::vector<int32> latenessMs, size_t least);

/** Of key presses to clicks: each press belongs to the click nearest to it, and of several the first counts. The first
    clicks are for finding the beat. Both lists are ascending, on one clock. */
std::optional<int32> tapped_lateness(std::span<const int64> clicksMs, std::span<const int64> tapsMs);

/** Learns from the user's own corrections: a line that was just stamped and is then moved or stamped anew was late by
    as much. Owned by an edit view, on its thread. */
class TStampCorrections {
public:
  /** The line got a tag of this time, at that moment, with that much added to the player's position. */
  void Stamped(int32 line, int32 tagMs, int64 nowMs, int32 offsetMs);
  /** The line's tag was moved by hand. */
  void Moved(int32 line, int32 tagMs, int64 nowMs);
  /** The lines are others now; what was learnt stays. */
  void ForgetLines();

  /** Once for every new finding that is worth telling: how late the stamps are. */
  std::optional<int32> NewFinding();

private:
  struct TStamp {
    int32 tagMs;
    int64 whenMs;
    int64 sample; // of the correction that it had; -1 while it had none
  };
  void Correct(TStamp* stamp, int32 tagMs);

  std::map<int32, TStamp> fStamps;
  std::deque<int32> fLateness; // of the last corrections
  int64 fFirstSample = 0;      // the number of the first one in the queue
  int32 fOffsetMs = 0;
  std::optional<int32> fTold;
};
