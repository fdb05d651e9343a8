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
constexpr float kFloorDb = -72;

/** A peak exceeds all other columns within this distance. */
constexpr size_t kNeighbours = 2;
/** A peak exceeds the mean of these columns by this much. */
constexpr size_t kMeanBefore = 20;
constexpr size_t kMeanAfter = 14;
constexpr float kAboveMeanDb = 20;

/** A sound starts where its flux crosses this share of its peak, searched in so many columns before the peak. */
constexpr float kStartShare = 0.5F;
constexpr size_t kLongestRise = 8;
constexpr double kColumnMs = 5;
/** A window rises as soon as the sound enters it, this much before the middle of its column. */
constexpr double kWindowLeadMs = 5;

/** The levels of these columns before and after an onset are compared for its strength; those next to it hold both. */
constexpr size_t kCalmColumns = 10;
constexpr size_t kRaisedColumns = 28;
constexpr size_t kGap = 2;
/** The rise of a clearest onset, mean of all bands. */
constexpr float kClearestDb = 20;

/** A column is judged when these have followed it. */
constexpr size_t kFollowing = kGap + kRaisedColumns - 1;
constexpr size_t kHistory = kCalmColumns + kGap + 1 + kFollowing;

} // namespace

void TOnsetDetector::Add(const TSoundColumn& column) {
  TLevels levels;
  std::ranges::transform(column.levelsDb, levels.begin(), [](float level) { return std::max(level, kFloorDb); });
  AddLevels(levels);
}

void TOnsetDetector::AddLevels(const TLevels& levels) {
  fRecent.push_back(levels);
  if (fRecent.size() > kHistory) fRecent.pop_front();
  fFlux.push_back(Flux());
  if (fRecent.size() == kHistory) Judge(fFlux.size() - 1 - kFollowing);
}

std::vector<TOnset> TOnsetDetector::Finish() {
  const double endMs = static_cast<double>(fFlux.size()) * kColumnMs;
  TLevels silence;
  silence.fill(kFloorDb);
  for (size_t i = 0; i < kFollowing; ++i) AddLevels(silence);
  std::erase_if(fOnsets, [endMs](const TOnset& onset) { return onset.timeMs > endMs; });
  return std::move(fOnsets);
}

void TOnsetDetector::Judge(size_t column) {
  if (!IsPeak(column)) return;
  const auto timeMs = static_cast<int32>(std::lround((StartOf(column) + 0.5) * kColumnMs + kWindowLeadMs));
  const float strength = std::clamp(RiseAtJudged() / kClearestDb * 255, 1.0F, 255.0F);
  const bool isNew = fOnsets.empty() || timeMs > fOnsets.back().timeMs;
  if (isNew) fOnsets.push_back({timeMs, static_cast<uint8>(std::lround(strength))});
}

float TOnsetDetector::Flux() const {
  if (fRecent.size() <= kLag) return 0;
  const TLevels& levels = fRecent.back();
  const TLevels& before = fRecent[fRecent.size() - 1 - kLag];
  float flux = 0;
  // The highest of three bands, so that vibrato and glides are no onsets.
  for (size_t i = kFirstBand; i < kEndBand; ++i)
    flux += std::max(0.0F, levels[i] - std::max({before[i - 1], before[i], before[i + 1]}));
  return flux;
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

/** By how many dB the levels are higher after the judged column than before it, mean of the bands that are. */
float TOnsetDetector::RiseAtJudged() const {
  constexpr size_t kRaised = kHistory - kRaisedColumns;
  float rise = 0;
  for (size_t band = kFirstBand; band < kEndBand; ++band) {
    float calm = 0;
    float raised = 0;
    for (size_t i = 0; i < kCalmColumns; ++i) calm += fRecent[i][band];
    for (size_t i = kRaised; i < kHistory; ++i) raised += fRecent[i][band];
    rise += std::max(0.0F, raised / kRaisedColumns - calm / kCalmColumns);
  }
  return rise / (kEndBand - kFirstBand);
}
