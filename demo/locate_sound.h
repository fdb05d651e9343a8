#pragma once

#include <cstddef>
#include <optional>
#include <span>

/** The position in the track that a short window of a recording matches. */
struct TPlace {
  double seconds;  ///< of the middle of the window, in the track
  double likeness; ///< normalized correlation, 0 to 1
};

struct TSearch {
  double aroundSec;  ///< expected position
  double rangeSec;   ///< searched on both sides of it
  size_t windowSize; ///< samples compared
};

/** Finds the window centred on sample `middle` of `heard` in `track` (both at TSinkRecorder::kRate).
    Nothing if the window is silent or leaves the recording. */
std::optional<TPlace> locate(std::span<const float> track, std::span<const float> heard, size_t middle,
                             const TSearch& search);
