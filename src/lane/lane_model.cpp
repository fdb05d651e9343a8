#include "lane/lane_model.h"

#include "lyrics/time_tags.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

constexpr int32 kHundredthMs = 10;
constexpr int32 kSecondMs = 1000;
/** A head of play that is so far beyond the range has jumped there. */
constexpr int32 kJumpMs = 1000;
/** An onset farther away than that belongs to another word. */
constexpr int32 kFarthestOnsetMs = 500;
/** A weak onset so near may be a breath or the end of the sound before. */
constexpr int32 kSameStartMs = 150;
constexpr int kMuchStronger = 2;

int32 resolution_of(const TLaneMarker& marker) {
  return marker.isWholeSeconds ? kSecondMs : kHundredthMs;
}

long floor_to(long timeMs, long unit) {
  const long rest = timeMs % unit;
  return timeMs - (rest < 0 ? rest + unit : rest);
}

} // namespace

TLaneRange TLaneModel::LineRange() const {
  const auto* const chosen = Chosen();
  const int32 aboutMs = chosen ? chosen->timeMs : fOfLine.fromMs + fOfLine.Length() / 2;
  return zoomed(fOfLine, fZoom, aboutMs);
}

void TLaneModel::SetLyrics(const TLaneLyrics& lyrics) {
  const bool isAnother = lyrics.row != fRow;
  const TLaneRange ofLine = range_of_line(lyrics);
  const bool showsLine = fRange == LineRange();
  fMarkers = markers_of(lyrics);
  fOffsetMs = lyrics.offsetMs;
  fRow = lyrics.row;
  fOfLine = ofLine;
  if (isAnother) fChosenTag = 0;
  if (isAnother) fDrag.reset();
  if (isAnother || showsLine) fRange = LineRange();
}

int32 TLaneModel::ShownTime(const TLaneMarker& marker) const {
  if (!fDrag) return marker.timeMs;
  if (marker.IsSame(fDrag->marker)) return fDrag->timeMs;
  const bool movesAlong = fDrag->movesLater && marker.timeMs >= fDrag->marker.timeMs;
  return movesAlong ? marker.timeMs + fDrag->timeMs - fDrag->marker.timeMs : marker.timeMs;
}

bool TLaneModel::Follow(std::optional<int32> headMs) {
  const std::optional<int32> before = std::exchange(fHeadMs, headMs);
  const bool wasInside = before && fRange.Contains(*before);
  if (!headMs || !wasInside || fDrag || *headMs < fRange.toMs || *headMs >= fRange.toMs + kJumpMs) return false;
  fRange = turned_to(fRange, *headMs);
  return true;
}

void TLaneModel::Zoom(double factor, int32 aboutMs) {
  fRange = zoomed(fRange, factor, aboutMs);
  fZoom = double{static_cast<double>(fRange.Length())} / std::max(fOfLine.Length(), 1);
}

void TLaneModel::ResetZoom() {
  fZoom = 1;
  fRange = LineRange();
}

void TLaneModel::Pan(int32 stepMs) {
  fRange = moved_by(fRange, stepMs);
}

const TLaneMarker* TLaneModel::Chosen() const {
  const auto isChosen = [this](const TLaneMarker& each) { return each.row == fRow && each.tag == fChosenTag; };
  const auto found = std::ranges::find_if(fMarkers, isChosen);
  return found == fMarkers.end() ? nullptr : &*found;
}

bool TLaneModel::ChooseNext(bool isLater) {
  const TLaneMarker* const chosen = Chosen();
  if (!chosen) return false;
  const auto at = chosen - fMarkers.data();
  const ptrdiff_t step = isLater ? 1 : -1;
  for (ptrdiff_t i = at + step; i >= 0 && i < std::ssize(fMarkers); i += step) {
    const TLaneMarker& each = fMarkers[static_cast<size_t>(i)];
    if (!each.isMovable) continue;
    fChosenTag = each.tag;
    if (!fRange.Contains(each.timeMs)) fRange = turned_to(fRange, each.timeMs);
    return true;
  }
  return false;
}

const TLaneMarker* TLaneModel::MarkerNear(int32 timeMs, int32 reachMs) const {
  const TLaneMarker* nearest = nullptr;
  for (const TLaneMarker& each : fMarkers) {
    const int32 distanceMs = std::abs(each.timeMs - timeMs);
    if (distanceMs > reachMs) continue;
    const bool isBetter = !nearest || (each.isMovable && !nearest->isMovable) ||
                          (each.isMovable == nearest->isMovable && distanceMs < std::abs(nearest->timeMs - timeMs));
    if (isBetter) nearest = &each;
  }
  return nearest;
}

void TLaneModel::Grab(const TLaneMarker& marker) {
  if (!marker.isMovable) return;
  fChosenTag = marker.tag;
  fDrag = TDrag{marker, marker.timeMs, false};
}

void TLaneModel::DragTo(int32 timeMs, const TLaneDragging& how) {
  if (!fDrag) return;
  const int32 wantedMs = how.reachMs > 0 ? SnappedTime(fDrag->marker, timeMs, how.reachMs) : timeMs;
  fDrag->movesLater = how.movesLater;
  fDrag->timeMs = Allowed(fDrag->marker, wantedMs, how.movesLater);
}

std::optional<TLaneMove> TLaneModel::Drop() {
  const std::optional<TDrag> drag = std::exchange(fDrag, std::nullopt);
  if (!drag) return {};
  return MoveOf(drag->marker, drag->timeMs, drag->movesLater);
}

std::optional<TLaneMove> TLaneModel::MoveOf(const TLaneMarker& marker, int32 toMs, bool movesLater) {
  if (toMs == marker.timeMs) return {};
  return TLaneMove{marker.row, marker.tag, marker.timeMs, toMs, movesLater};
}

std::optional<TLaneMove> TLaneModel::Nudged(int32 stepMs, bool movesLater) const {
  const TLaneMarker* const marker = Chosen();
  if (!marker) return {};
  const int32 sizeMs = std::max(std::abs(stepMs), resolution_of(*marker));
  return MoveOf(*marker, Allowed(*marker, marker->timeMs + (stepMs < 0 ? -sizeMs : sizeMs), movesLater), movesLater);
}

std::optional<TLaneMove> TLaneModel::Snapped() const {
  const TLaneMarker* const marker = Chosen();
  const TOnset* const onset = marker ? OnsetToSnapTo(marker->timeMs) : nullptr;
  if (!onset) return {};
  return MoveOf(*marker, Allowed(*marker, onset->timeMs, false), false);
}

std::optional<int32> TLaneModel::NewTagTime(int32 timeMs, int32 reachMs) const {
  if (fRow < 0 || Chosen()) return {};
  const TOnset* const onset = OnsetNear(timeMs, reachMs);
  int32 wantedMs = onset ? onset->timeMs : timeMs;
  const TLaneMarker* above = nullptr;
  const TLaneMarker* below = nullptr;
  for (const TLaneMarker& each : fMarkers) { // by time: of a row, the last or the first
    if (each.row < fRow && (!above || each.row >= above->row)) above = &each;
    if (each.row > fRow && (!below || each.row < below->row)) below = &each;
  }
  if (below) wantedMs = std::min(wantedMs, below->timeMs);
  if (above) wantedMs = std::max(wantedMs, above->timeMs);
  return wantedMs;
}

/** Markers of other rows at the same time do not hold it: lines in two languages have the same tag. */
TLaneModel::TBounds TLaneModel::BoundsOf(const TLaneMarker& marker, bool movesLater) const {
  TBounds bounds{static_cast<int32>(-fOffsetMs), static_cast<int32>(kLastTagTime - fOffsetMs)};
  for (const TLaneMarker& each : fMarkers) {
    if (each.IsSame(marker)) continue;
    const bool isTied = each.timeMs == marker.timeMs && each.row == marker.row && !movesLater;
    const bool isEarlier = each.timeMs < marker.timeMs || (isTied && each.tag < marker.tag);
    const bool isLater = each.timeMs > marker.timeMs || (isTied && each.tag > marker.tag);
    if (isEarlier) bounds.earliestMs = std::max(bounds.earliestMs, each.timeMs);
    if (isLater && !movesLater) bounds.latestMs = std::min(bounds.latestMs, each.timeMs);
  }
  return bounds;
}

int32 TLaneModel::Allowed(const TLaneMarker& marker, int32 timeMs, bool movesLater) const {
  const TBounds bounds = BoundsOf(marker, movesLater);
  const long unit = resolution_of(marker);
  const long earliest = -floor_to(-(bounds.earliestMs + fOffsetMs), unit);
  const long latest = floor_to(bounds.latestMs + fOffsetMs, unit);
  if (earliest > latest) return marker.timeMs;
  const long rounded = floor_to(timeMs + fOffsetMs + unit / 2, unit);
  return static_cast<int32>(std::clamp(rounded, earliest, latest) - fOffsetMs);
}

const TOnset* TLaneModel::OnsetNear(int32 timeMs, int32 reachMs) const {
  if (!fSound) return nullptr;
  const std::vector<TOnset>& onsets = fSound->Onsets();
  auto next = std::ranges::lower_bound(onsets, timeMs, {}, &TOnset::timeMs);
  if (next == onsets.end() || (next != onsets.begin() && timeMs - std::prev(next)->timeMs < next->timeMs - timeMs)) {
    if (next == onsets.begin()) return nullptr;
    --next;
  }
  return std::abs(next->timeMs - timeMs) <= reachMs ? &*next : nullptr;
}

const TOnset* TLaneModel::OnsetToSnapTo(int32 timeMs) const {
  const TOnset* const nearest = OnsetNear(timeMs, kFarthestOnsetMs);
  if (!nearest) return nullptr;
  const std::vector<TOnset>& onsets = fSound->Onsets();
  const TOnset* strongest = nearest;
  for (auto each = std::ranges::lower_bound(onsets, timeMs - kSameStartMs, {}, &TOnset::timeMs);
       each != onsets.end() && each->timeMs <= timeMs + kSameStartMs; ++each)
    if (each->strength > strongest->strength) strongest = &*each;
  return strongest->strength >= kMuchStronger * nearest->strength ? strongest : nearest;
}

int32 TLaneModel::SnappedTime(const TLaneMarker& marker, int32 timeMs, int32 reachMs) const {
  int32 snappedMs = timeMs;
  int32 nearestMs = reachMs + 1;
  const auto offer = [&](int32 candidateMs) {
    const int32 distanceMs = std::abs(candidateMs - timeMs);
    if (distanceMs >= nearestMs) return;
    nearestMs = distanceMs;
    snappedMs = candidateMs;
  };
  if (const TOnset* const onset = OnsetNear(timeMs, reachMs)) offer(onset->timeMs);
  for (const TLaneMarker& each : fMarkers)
    if (!each.IsSame(marker)) offer(each.timeMs);
  return snappedMs;
}
