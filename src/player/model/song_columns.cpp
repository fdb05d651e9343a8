#include "player/model/song_columns.h"

#include <algorithm>

namespace {

constexpr bool is_text(size_t index) {
  return index == index_of(TColumn::kTitle) || index == index_of(TColumn::kArtist) ||
         index == index_of(TColumn::kAlbum);
}

} // namespace

TColumnWidths fit_columns(const TColumnWidths& wanted, const std::array<bool, kColumnCount>& shown, int32 room) {
  TColumnWidths widths{};
  int64 wantedByTexts = 0;
  for (size_t i = 0; i < kColumnCount; ++i) {
    if (!shown[i]) continue;
    if (is_text(i)) {
      wantedByTexts += std::max(wanted[i], int32{1});
    } else {
      widths[i] = wanted[i];
      room -= wanted[i];
    }
  }
  for (size_t i = 0; i < kColumnCount; ++i) {
    if (!shown[i] || !is_text(i)) continue;
    const int64 wantedHere = std::max(wanted[i], int32{1});
    const auto share = static_cast<int32>(std::max(room, int32{0}) * wantedHere / wantedByTexts);
    widths[i] = std::max(share, kNarrowestColumn);
    room -= share;
    wantedByTexts -= wantedHere;
  }
  return widths;
}
