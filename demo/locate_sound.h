#pragma once

#include <cstddef>
#include <optional>
#include <span>

/** Where a few milliseconds of a recording come from in the track. */
struct TPlace {
  double seconds;  ///< place in the track of the middle of the window
  double likeness; ///< normalized correlation there, 0 to 1
};

struct TSearch {
  double aroundSec;  ///< expected place
  double rangeSec;   ///< searched on both sides of it
  size_t windowSize; ///< samples compared
};

/** Finds the window centred on sample `middle` of `heard` in `track` (both at TSinkRecorder::kRate).
    Nothing if the window is silent or leaves the recording. */
std::optional<TPlace> locate(std::span<const float> track, std::span<const float> heard, size_t middle,
                             const TSearch& search);
