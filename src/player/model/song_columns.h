#pragma once

#include "platform/support/types.h"

#include <array>

/** The columns of the playlist, from left to right; the first one marks the current song. */
enum class TColumn : int32 { kMark, kTrack, kTitle, kArtist, kAlbum, kLength };
inline constexpr size_t kColumnCount = 6;
inline constexpr int32 kWidestColumn = 10000;
inline constexpr int32 kNarrowestColumn = 24;

using TColumnWidths = std::array<int32, kColumnCount>;

/** The columns that the user has chosen, and their widths. */
struct TColumnChoices {
  std::array<bool, kColumnCount> shown{true, false, true, true, false, true};
  TColumnWidths widths{}; // pixels; 0 for the default
  bool operator==(const TColumnChoices&) const = default;
};

constexpr size_t index_of(TColumn column) {
  return static_cast<size_t>(column);
}

/** Mark and title are always shown. */
constexpr bool is_optional(TColumn column) {
  return column != TColumn::kMark && column != TColumn::kTitle;
}

/** The widths of the shown columns in that room, 0 for hidden ones: mark, track and length as wanted, while title,
    artist and album share the rest in proportion to what is wanted for them. Pure. */
TColumnWidths fit_columns(const TColumnWidths& wanted, const std::array<bool, kColumnCount>& shown, int32 room);
