#pragma once

#include "common/onset.h"
#include "player/peaks/sound_columns.h"

#include <array>
#include <deque>
#include <vector>

/** Finds where voices and notes start, by spectral flux: by how much the levels of the bands rise from one column to
   the next. Pure. */
class TOnsetDetector {
public:
  /** Consecutive columns from the start of the song. */
  void Add(const TSoundColumn& column);
  /** The onsets of all columns, ascending. */
  std::vector<TOnset> Finish() const;

private:
  using TLevels = std::array<float, kAnalysisBands>;

  bool IsPeak(size_t column) const;
  float MeanAround(size_t column) const;
  double StartOf(size_t peak) const;

  std::deque<TLevels> fRecent;
  std::vector<float> fFlux; // one a column, in dB, summed over the bands
};
