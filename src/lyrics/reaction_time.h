#pragma once

#include "platform/support/types.h"

#include <deque>
#include <map>
#include <optional>
#include <span>
#include <vector>

/** Estimates by how much a person's key presses lag behind what they hear. Pure: no clock, no window. Times are in ms;
    positive means late. */

/** The median without outliers. Nothing when fewer than `least` values remain, or when these still disagree. */
std::optional<int32> typical_lateness(std::vector<int32> latenessMs, size_t least);

/** Lateness of key presses after clicks. Each press belongs to the nearest click; of several only the first counts. The
    first clicks are a warm-up. Both lists are ascending and use one clock. */
std::optional<int32> tapped_lateness(std::span<const int64> clicksMs, std::span<const int64> tapsMs);

/** Learns from the user's corrections: a line that is moved or stamped again soon after its stamp was late by the
    difference. Owned by an edit view, on its thread. */
class TStampCorrections {
public:
  /** The line got a tag of this time at `nowMs`; `offsetMs` was added to the player's position. */
  void Stamped(int32 line, int32 tagMs, int64 nowMs, int32 offsetMs);
  /** The user moved the line's tag. */
  void Moved(int32 line, int32 tagMs, int64 nowMs);
  /** Another document: forgets which lines were stamped, but keeps the corrections. */
  void ForgetLines();

  /** How late the user's stamps are, as far as the corrections tell. */
  std::optional<int32> Lateness() const;
  /** The lateness, once for each finding that differs enough from the previous one to be reported. */
  std::optional<int32> NewFinding();

private:
  struct TStamp {
    int32 tagMs;
    int64 whenMs;
    int64 sample; // number of its correction; -1 without one
  };
  void Correct(TStamp* stamp, int32 tagMs);

  std::map<int32, TStamp> fStamps;
  std::deque<int32> fLateness; // the last corrections
  int64 fFirstSample = 0;      // number of the first value in fLateness
  int32 fOffsetMs = 0;
  std::optional<int32> fReported;
};
