#include "player/model/song_sorting.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace {

/** A text as a key that is fast to compare; an empty one is greater than all others. */
struct TTextKey {
  bool isEmpty;
  std::optional<QCollatorSortKey> key;
  int Compare(const TTextKey& other) const {
    if (isEmpty != other.isEmpty) return isEmpty ? 1 : -1;
    return key->compare(*other.key);
  }
};

struct TKeys {
  int64 id;
  int32 track;
  int32 durationMs;
  TTextKey title;
  TTextKey artist;
  TTextKey album;
  TTextKey path;
};

TKeys keys_of(const TSong& song, const QCollator& collator) {
  const auto key = [&collator](const std::string& text) {
    return TTextKey{text.empty(), collator.sortKey(QString::fromStdString(text))};
  };
  return {song.id, song.track, song.durationMs, key(song.title), key(song.artist), key(song.album), key(song.path)};
}

int compare_numbers(int32 a, int32 b) {
  return (a > b) - (a < b);
}

int compare_by(TSortKey key, const TKeys& a, const TKeys& b) {
  switch (key) {
  case TSortKey::kTitle:
    return a.title.Compare(b.title);
  case TSortKey::kArtist:
    return a.artist.Compare(b.artist);
  case TSortKey::kDuration:
    return compare_numbers(a.durationMs, b.durationMs);
  case TSortKey::kPath:
    return a.path.Compare(b.path);
  default:
    return 0;
  }
}

bool comes_before(TSortKey key, const TKeys& a, const TKeys& b) {
  for (const int order : {compare_by(key, a, b), a.album.Compare(b.album), compare_numbers(a.track, b.track),
                          a.title.Compare(b.title), a.path.Compare(b.path)}) {
    if (order != 0) return order < 0;
  }
  return false;
}

} // namespace

std::vector<int64> sorted_ids(const TSongs& songs, TSortKey key) {
  const QLocale user;
  QCollator collator(user.language() == QLocale::C ? QLocale(QLocale::English) : user); // C compares bytes
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::vector<TKeys> keys;
  keys.reserve(songs.size());
  for (const TSong& song : songs) keys.push_back(keys_of(song, collator));
  std::ranges::stable_sort(keys, [key](const TKeys& a, const TKeys& b) { return comes_before(key, a, b); });
  std::vector<int64> ids;
  for (const TKeys& one : keys) ids.push_back(one.id);
  return ids;
}
