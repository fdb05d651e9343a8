#pragma once

#include "bench/audio_conditions.h"

#include <span>
#include <string>
#include <vector>

/** The recording of a measurement. */
struct THeard {
  std::vector<float> samples; ///< at TSinkRecorder::kRate
  int64_t startUs;            ///< when sample 0 was put out
};

/** Reported minus heard position, ms of the track, ascending; and the probes whose sound was not found. */
struct TErrors {
  std::vector<double> ms;
  size_t lost = 0;
};

/** For timed_noise played by a method that keeps the waveform, piece by piece at least. A probe in stretched sound is
    compared in pieces of 8 ms, since it is spliced from pieces of the track. */
TErrors noise_errors(const std::vector<TProbe>& probes, const THeard& heard, bool stretched);

/** For click_track, by any method: where the source said it was when each click was heard. */
TErrors click_errors(const std::vector<TProbe>& probes, const THeard& heard, double speed);

/** One line: count, lost, mean, median, 1st and 99th percentile, 99th percentile of the size, share within 3 ms
    of 0 and of the mean. */
std::string error_row(const TErrors& errors);
extern const char* const kErrorColumns;
