#pragma once

#include "player/model/playlist.h"

#include <QString>
#include <QStringList>

/** Text without case, accents and compatibility forms such as full-width letters, for searches. */
QString folded_text(const QString& text);

/** Which songs the user wants to see: those that have each of the words in their title, artist or album.
    Pure. */
class TSongFilter {
public:
  explicit TSongFilter(const QString& words = {}) : fWords(folded_text(words).split(' ', Qt::SkipEmptyParts)) {}
  bool IsEmpty() const { return fWords.isEmpty(); }
  bool Matches(const TSong& song) const;

private:
  QStringList fWords;
};
