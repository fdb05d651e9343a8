#include "player/peaks/onset_detector.h"

#include <algorithm>
#include <cmath>

namespace {

/** Columns that are compared: with direct neighbours, whose windows overlap most, slow rises would be lost. */
constexpr size_t kLag = 2;
/** About 300 Hz to 6 kHz. Bass drums and cymbals, which often sound within 20 ms of a singer, are outside. */
constexpr size_t kFirstBand = 5;
constexpr size_t kEndBand = 50;
/** What is below is not heard in a song. */
constexpr float kFloorDb = -60;

/** A peak exceeds all other columns within this distance, */
constexpr size_t kNeighbours = 3;
/** and the mean of these columns by this much. */
constexpr size_t kMeanBefore = 20;
constexpr size_t kMeanAfter = 14;
constexpr float kAboveMeanDb = 20;

/** A sound starts where its flux crosses this share of its peak, searched in so many columns before it, */
constexpr float kStartShare = 0.5F;
constexpr size_t kLongestRise = 8;
constexpr double kColumnMs = 5;
/** and this much later, since a window rises as soon as the sound enters it. */
constexpr double kWindowLeadMs = 3;

} // namespace

void TOnsetDetector::Add(const TSoundColumn& column) {
  TLevels levels;
  std::ranges::transform(column.levelsDb, levels.begin(), [](float level) { return std::max(level, kFloorDb); });
  float flux = 0;
  if (fRecent.size() == kLag) {
    const TLevels& before = fRecent.front();
    // The highest of three bands, so that vibrato and glides are no onsets.
    for (size_t i = kFirstBand; i < kEndBand; ++i)
      flux += std::max(0.0F, levels[i] - std::max({before[i - 1], before[i], before[i + 1]}));
    fRecent.pop_front();
  }
  fRecent.push_back(levels);
  fFlux.push_back(flux);
}

bool TOnsetDetector::IsPeak(size_t column) const {
  const size_t end = std::min(column + kNeighbours + 1, fFlux.size());
  for (size_t i = column - std::min(column, kNeighbours); i < end; ++i) {
    if (i != column && fFlux[i] >= fFlux[column]) return false;
  }
  return fFlux[column] >= MeanAround(column) + kAboveMeanDb;
}

float TOnsetDetector::MeanAround(size_t column) const {
  const size_t first = column - std::min(column, kMeanBefore);
  const size_t end = std::min(column + kMeanAfter + 1, fFlux.size());
  float sum = 0;
  for (size_t i = first; i < end; ++i) sum += fFlux[i];
  return sum / static_cast<float>(end - first);
}

/** In columns. */
double TOnsetDetector::StartOf(size_t peak) const {
  const float bound = kStartShare * fFlux[peak];
  size_t column = peak;
  while (column > 0 && peak - column < kLongestRise && fFlux[column - 1] > bound) --column;
  const auto whole = static_cast<double>(column);
  if (column == 0 || fFlux[column - 1] > bound) return whole;
  return whole - (fFlux[column] - bound) / (fFlux[column] - fFlux[column - 1]);
}

std::vector<TOnset> TOnsetDetector::Finish() const {
  std::vector<TOnset> onsets;
  const float most = fFlux.empty() ? 0 : *std::ranges::max_element(fFlux);
  const double endMs = static_cast<double>(fFlux.size()) * kColumnMs;
  for (size_t column = 0; column < fFlux.size(); ++column) {
    if (!IsPeak(column)) continue;
    const double startMs = (StartOf(column) + 0.5) * kColumnMs + kWindowLeadMs;
    const auto timeMs = static_cast<int32>(std::lround(std::min(startMs, endMs)));
    const bool isNew = onsets.empty() || timeMs > onsets.back().timeMs;
    if (isNew) onsets.push_back({timeMs, static_cast<uint8>(std::lround(fFlux[column] / most * 255))});
  }
  return onsets;
}
