#pragma once

#include "common/onset.h"
#include "player/peaks/sound_columns.h"

#include <array>
#include <deque>
#include <vector>

/** Finds where voices and notes start, by spectral flux: by how much the levels of the bands rise from one column to
   the next. An onset is the stronger the more the levels stay raised after it, so a line that is sung after a rest is
   clearer than a drum of the same loudness. Pure. */
class TOnsetDetector {
public:
  /** Consecutive columns from the start of the song. */
  void Add(const TSoundColumn& column);
  /** The onsets of all columns, ascending. To be called once, at the end. */
  std::vector<TOnset> Finish();

private:
  using TLevels = std::array<float, kAnalysisBands>;

  void AddLevels(const TLevels& levels);
  void Judge(size_t column);
  float Flux() const;
  bool IsPeak(size_t column) const;
  float MeanAround(size_t column) const;
  double StartOf(size_t peak) const;
  float RiseAtJudged() const;

  std::deque<TLevels> fRecent; // the newest last
  std::vector<float> fFlux;    // one a column, in dB, summed over the bands
  std::vector<TOnset> fOnsets;
};
