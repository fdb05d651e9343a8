#include "songsound/song_sound.h"

#include <algorithm>
#include <utility>

namespace {
/** A newer part beyond these replaces the oldest. */
constexpr size_t kMostParts = 32;

size_t column_in(const TSoundPart& part, int32 timeMs) {
  return static_cast<size_t>((timeMs - part.fromMs) / kSoundColumnMs);
}
} // namespace

void TSongSound::Add(TSoundPart part) {
  if (part.peaks.empty() || part.levels.size() != part.peaks.size() * kSoundBands) return;
  const auto isCovered = [&part](const auto& older) {
    return older->fromMs >= part.fromMs && older->EndMs() <= part.EndMs();
  };
  std::erase_if(fParts, isCovered);
  if (fParts.size() == kMostParts) fParts.pop_back();
  fParts.push_front(std::make_shared<const TSoundPart>(std::move(part)));
}

void TSongSound::SetOnsets(std::vector<TOnset> onsets) {
  fOnsets = std::make_shared<const std::vector<TOnset>>(std::move(onsets));
}

const TSoundPart* TSongSound::PartAt(int32 timeMs) const {
  const auto contains = [timeMs](const auto& part) { return timeMs >= part->fromMs && timeMs < part->EndMs(); };
  const auto part = std::ranges::find_if(fParts, contains);
  return part == fParts.end() ? nullptr : part->get();
}

bool TSongSound::HasPart(int32 fromMs, int32 toMs) const {
  while (fromMs < toMs) {
    const TSoundPart* const part = PartAt(fromMs);
    if (part == nullptr) return fDurationMs > 0 && fromMs >= fDurationMs;
    fromMs = part->EndMs();
  }
  return true;
}

const uint8* TSongSound::Levels(int32 timeMs) const {
  const TSoundPart* const part = PartAt(timeMs);
  return part ? part->levels.data() + column_in(*part, timeMs) * kSoundBands : nullptr;
}

std::optional<uint8> TSongSound::Peak(int32 timeMs) const {
  const TSoundPart* const part = PartAt(timeMs);
  return part ? std::optional(part->peaks[column_in(*part, timeMs)]) : std::nullopt;
}

const std::vector<TOnset>& TSongSound::Onsets() const {
  static const std::vector<TOnset> none;
  return fOnsets ? *fOnsets : none;
}
