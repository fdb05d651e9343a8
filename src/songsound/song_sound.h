#pragma once

#include "common/onset.h"

#include <deque>
#include <memory>
#include <optional>
#include <vector>

/** What is known of the sound of a song, for the lane: a spectrogram, a wave and the onsets. Times count as the
   player's position does, from the start of the decoded file. Pure: any thread. */

/** Duration of one column. */
inline constexpr int32 kSoundColumnMs = 5;
/** Levels of one column, from low to high frequencies, spaced as the ear hears. */
inline constexpr int32 kSoundBands = 64;
/** The levels span 96 dB: 0 is silence, 255 full scale. */
inline constexpr int32 kSoundLevelsDb = 96;

/** Consecutive columns. */
struct TSoundPart {
  int32 fromMs = 0;          // a multiple of kSoundColumnMs
  std::vector<uint8> levels; // kSoundBands a column
  std::vector<uint8> peaks;  // one a column, linear: the largest sample, 255 at full scale

  int32 EndMs() const { return fromMs + static_cast<int32>(peaks.size()) * kSoundColumnMs; }
  friend bool operator==(const TSoundPart&, const TSoundPart&) = default;
};

/** What has been read of one song so far. Copies share the parts. */
class TSongSound {
public:
  /** Replaces what it overlaps. Ignored unless it has as many levels as its columns need. */
  void Add(TSoundPart part);
  /** Of the whole song, ascending. */
  void SetOnsets(std::vector<TOnset> onsets);
  void SetDuration(int32 durationMs) { fDurationMs = durationMs; }

  bool HasPart(int32 fromMs, int32 toMs) const;
  /** kSoundBands levels; null if they have not been read. Valid until the next change. */
  const uint8* Levels(int32 timeMs) const;
  std::optional<uint8> Peak(int32 timeMs) const;
  const std::vector<TOnset>& Onsets() const;
  /** The onsets are known, and so is all that will be known. Of a very long song only the requested parts have levels.
   */
  bool IsComplete() const { return fOnsets != nullptr; }
  /** 0 until the whole song has been read. */
  int32 DurationMs() const { return fDurationMs; }

private:
  const TSoundPart* PartAt(int32 timeMs) const;

  std::deque<std::shared_ptr<const TSoundPart>> fParts; // the newest first
  std::shared_ptr<const std::vector<TOnset>> fOnsets;
  int32 fDurationMs = 0;
};
