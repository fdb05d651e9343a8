#include "player/list/list_total.h"

#include "player/model/song_text.h"
#include "player/widgets/shown_text.h"

#include <algorithm>
#include <cstdint>

QString list_total(const TSongs& songs) {
  if (songs.empty()) return {};
  int64 totalMs = 0;
  for (const TSong& song : songs) totalMs += song.durationMs;
  const auto shownMs = static_cast<int32>(std::min<int64>(totalMs, INT32_MAX));
  const QString length = QString::fromStdString(clock_text(shownMs));
  if (songs.size() == 1) return shown_text("Player_Total_One").arg(length);
  return shown_text("Player_Total").arg(QString::number(songs.size()), length);
}
