#include "lyrics/proposal.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdlib>

namespace {

using TLineTime = std::pair<int32, int32>;

/** Lateness that is searched: people seldom press before they hear, and never so late. */
constexpr int32 kLeastLatenessMs = -100;
constexpr int32 kMostLatenessMs = 400;
constexpr int32 kLatenessStepMs = 5;
constexpr double kFirstSpreadMs = 40;
/** The lateness of most people. */
constexpr double kUsualLatenessMs = 90;
constexpr double kUsualSpreadMs = 90;
/** Fewer tags do not tell how late they are. */
constexpr size_t kLeastTags = 6;
/** The spread of the tags around the onsets is that of a person. */
constexpr double kLeastSpreadMs = 12;
constexpr double kMostSpreadMs = 60;
constexpr int kRounds = 8;
/** The spread is found among onsets within reach only, and so a little too small. */
constexpr double kSpreadCorrection = 1.2;
/** Onsets further from where a tag is expected than this many spreads do not count. */
constexpr double kReach = 3;
/** Weight of "there is no onset of this line", relative to a clearest onset exactly where it is expected. */
constexpr double kNoOnset = 0.03;
/** The onset that is proposed, with those too close to it to matter, has this share of the weight of all. */
constexpr double kClear = 0.75;
constexpr int32 kSameMs = 15;
/** A smaller difference is none: tags have hundredths. */
constexpr int32 kLeastMoveMs = 10;
double weight_of(const TOnset& onset) {
  return std::pow(onset.strength / 255.0, 1.5);
}

double bell(double distance, double spread) {
  return std::exp(-distance * distance / (2 * spread * spread));
}

std::span<const TOnset> between(std::span<const TOnset> onsets, double fromMs, double toMs) {
  const auto first = std::ranges::lower_bound(onsets, fromMs, {}, &TOnset::timeMs);
  const auto last = std::ranges::upper_bound(first, onsets.end(), toMs, {}, &TOnset::timeMs);
  return {first, last};
}

/** How a person stamps: late by this much, with this standard deviation. */
struct THabit {
  double latenessMs = 0;
  double spreadMs = kFirstSpreadMs;

  std::span<const TOnset> Near(std::span<const TOnset> onsets, int32 tagMs) const {
    const double expected = tagMs - latenessMs;
    return between(onsets, expected - kReach * spreadMs, expected + kReach * spreadMs);
  }
  double WeightOf(const TOnset& onset, int32 tagMs) const {
    return weight_of(onset) * bell(tagMs - latenessMs - onset.timeMs, spreadMs);
  }
};

double total_weight(const THabit& habit, std::span<const TLineTime> lines, std::span<const TOnset> onsets) {
  double total = 0;
  for (const auto& [line, tagMs] : lines) {
    double best = 0;
    for (const TOnset& onset : habit.Near(onsets, tagMs)) best = std::max(best, habit.WeightOf(onset, tagMs));
    total += best;
  }
  return total;
}

/** `usualMs` decides when the onsets of a rhythm fit two ways equally well. */
THabit likeliest_habit(std::span<const TLineTime> lines, std::span<const TOnset> onsets, double usualMs) {
  THabit best;
  double most = -1;
  for (int32 lateness = kLeastLatenessMs; lateness <= kMostLatenessMs; lateness += kLatenessStepMs) {
    const THabit habit{static_cast<double>(lateness)};
    const double total = total_weight(habit, lines, onsets) * bell(lateness - usualMs, kUsualSpreadMs);
    if (total > most) best = habit;
    most = std::max(most, total);
  }
  return best;
}

/** Expectation maximization: the lateness and spread of the tags against the onsets that are likely theirs. */
THabit refined(THabit habit, std::span<const TLineTime> lines, std::span<const TOnset> onsets) {
  double sum = 0, squares = 0, weights = 0;
  for (const auto& [line, tagMs] : lines) {
    const auto near = habit.Near(onsets, tagMs);
    double all = kNoOnset;
    for (const TOnset& onset : near) all += habit.WeightOf(onset, tagMs);
    for (const TOnset& onset : near) {
      const double share = habit.WeightOf(onset, tagMs) / all;
      const double late = tagMs - onset.timeMs;
      weights += share;
      sum += share * late;
      squares += share * late * late;
    }
  }
  if (weights < 1) return habit;
  const double mean = sum / weights;
  const double spread = std::sqrt(std::max(squares / weights - mean * mean, 0.0));
  return {mean, std::clamp(spread * kSpreadCorrection, kLeastSpreadMs, kMostSpreadMs)};
}

/** The onset of the tag, if one is clear. */
const TOnset* clear_onset(const THabit& habit, std::span<const TOnset> onsets, int32 tagMs) {
  const auto near = habit.Near(onsets, tagMs);
  if (near.empty()) return nullptr;
  const auto weight = [&](const TOnset& onset) { return habit.WeightOf(onset, tagMs); };
  const auto best = std::ranges::max_element(near, {}, weight);
  double all = kNoOnset;
  double same = 0;
  for (const TOnset& onset : near) {
    all += weight(onset);
    if (std::abs(onset.timeMs - best->timeMs) <= kSameMs) same += weight(onset);
  }
  return same >= kClear * all ? &*best : nullptr;
}

THabit habit_of(std::span<const TLineTime> lines, std::span<const TOnset> onsets, std::optional<int32> latenessMs) {
  const double usualMs = latenessMs ? *latenessMs : kUsualLatenessMs;
  THabit habit = lines.size() < kLeastTags ? THabit{usualMs} : likeliest_habit(lines, onsets, usualMs);
  for (int round = 0; round < kRounds; ++round) habit = refined(habit, lines, onsets);
  return habit;
}

} // namespace

std::vector<TProposedTag> propose_tags(std::span<const TLineTime> lineTimes, std::span<const TOnset> onsets,
                                       std::optional<int32> latenessMs) {
  if (!latenessMs && lineTimes.size() < kLeastTags) return {};
  std::vector<TLineTime> lines(lineTimes.begin(), lineTimes.end());
  std::ranges::stable_sort(lines, {}, &TLineTime::second);
  const THabit habit = habit_of(lines, onsets, latenessMs);
  std::vector<TProposedTag> proposals;
  int32 previousMs = INT_MIN; // the latest old or new time of lines with earlier tags
  int32 reachedMs = INT_MIN;  // the same of all lines so far
  for (size_t i = 0; i < lines.size(); ++i) {
    const auto [line, tagMs] = lines[i];
    if (i > 0 && lines[i - 1].second < tagMs) previousMs = reachedMs;
    reachedMs = std::max(reachedMs, tagMs);
    const TOnset* const onset = clear_onset(habit, onsets, tagMs);
    if (onset == nullptr || std::abs(onset->timeMs - tagMs) < kLeastMoveMs) continue;
    const auto next = std::ranges::upper_bound(lines, tagMs, {}, &TLineTime::second);
    const bool keepsOrder = onset->timeMs > previousMs && (next == lines.end() || onset->timeMs < next->second);
    if (!keepsOrder) continue;
    proposals.push_back({line, tagMs, onset->timeMs});
    reachedMs = std::max(reachedMs, onset->timeMs);
  }
  return proposals;
}
