#pragma once

#include "platform/support/types.h"

#include <array>
#include <functional>
#include <memory>
#include <span>
#include <vector>

/** Sample rate at which sound is analysed: the spectrum reaches half of it. */
inline constexpr int32 kAnalysisRate = 24000;
inline constexpr size_t kAnalysisBands = 64;

/** One column of the spectrogram. */
struct TSoundColumn {
  std::array<float, kAnalysisBands> levelsDb; // relative to a sine at full scale, at least kSilenceDb
  float peak;                                 // the largest sample, without sign
};
inline constexpr float kSilenceDb = -96;

/** Short-time Fourier transform: cuts mono samples into columns of 5 ms, each with the spectrum of a window around its
    middle, in bands spaced by the mel scale. */
class TSoundColumns {
public:
  using TTaker = std::function<void(const TSoundColumn& column)>;
  /** `firstSample`: index in the song of the first sample that will be added. */
  TSoundColumns(int64 firstSample, TTaker take);
  TSoundColumns(const TSoundColumns&) = delete;
  TSoundColumns& operator=(const TSoundColumns&) = delete;
  ~TSoundColumns();

  /** Index in the song of the first column that is passed to the taker: the first one whose window is complete. */
  int64 FirstColumn() const { return fFirstColumn; }
  void Add(std::span<const float> samples);
  /** Completes the last columns with silence. */
  void Finish();

private:
  class TTransform;
  TSoundColumn Analyse(const float* window);
  void TakeComplete(size_t columns);

  const TTaker fTake;
  const std::unique_ptr<TTransform> fTransform;
  int64 fFirstColumn = 0;
  size_t fSkip = 0;            // samples before the first column's window
  std::vector<float> fSamples; // from the start of the next column's window
};
