#include "player/list/song_filter.h"

#include <algorithm>

QString folded_text(const QString& text) {
  QString folded = text.normalized(QString::NormalizationForm_KD).toCaseFolded();
  folded.removeIf([](QChar c) { return c.category() == QChar::Mark_NonSpacing; });
  return folded;
}

bool TSongFilter::Matches(const TSong& song) const {
  if (IsEmpty()) return true;
  const QString told = folded_text(QString::fromStdString(song.title + '\n' + song.artist + '\n' + song.album));
  return std::ranges::all_of(fWords, [&](const QString& word) { return told.contains(word); });
}
