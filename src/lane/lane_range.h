#pragma once

#include "platform/support/types.h"

/** The part of a song that the lane shows. Pure: any thread. */
struct TLaneRange {
  int32 fromMs = 0;
  int32 toMs = 1; // after fromMs

  int32 Length() const { return toMs - fromMs; }
  bool Contains(int32 timeMs) const { return timeMs >= fromMs && timeMs < toMs; }
  double XOf(int32 timeMs, double width) const;
  int32 TimeAt(double x, double width) const;
  /** The length of that many pixels. */
  int32 Duration(double pixels, double width) const;

  friend bool operator==(const TLaneRange&, const TLaneRange&) = default;
};

inline constexpr int32 kShortestLaneMs = 200;
inline constexpr int32 kLongestLaneMs = 120000;

/** Scaled by the factor, within the limits; the time stays where it is. */
TLaneRange zoomed(const TLaneRange& range, double factor, int32 aboutMs);
/** A range as long, which begins a little before the time. */
TLaneRange turned_to(const TLaneRange& range, int32 timeMs);
TLaneRange moved_by(const TLaneRange& range, int32 stepMs);
