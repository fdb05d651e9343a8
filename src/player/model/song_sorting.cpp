#include "player/model/song_sorting.h"

#include <QCollator>
#include <QLocale>

#include <algorithm>
#include <optional>

namespace {

/** A text as a key that is fast to compare. */
struct TTextKey {
  bool isEmpty;
  std::optional<QCollatorSortKey> key;
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

/** 1: only `a` lacks what is compared, -1: only `b`. */
int compare_absence(bool isAbsentInA, bool isAbsentInB) {
  return isAbsentInA - isAbsentInB;
}

int compare(const TTextKey& a, const TTextKey& b, int direction = 1) {
  const int absence = compare_absence(a.isEmpty, b.isEmpty);
  return absence != 0 ? absence : direction * a.key->compare(*b.key);
}

int compare(int32 a, int32 b, int direction) {
  const int absence = compare_absence(a == 0, b == 0);
  return absence != 0 ? absence : direction * compare_numbers(a, b);
}

int compare_by(const TSongOrder& order, const TKeys& a, const TKeys& b) {
  const int direction = order.isDescending ? -1 : 1;
  switch (order.key) {
  case TSortKey::kTitle:
    return compare(a.title, b.title, direction);
  case TSortKey::kArtist:
    return compare(a.artist, b.artist, direction);
  case TSortKey::kAlbum:
    return compare(a.album, b.album, direction);
  case TSortKey::kDuration:
    return compare(a.durationMs, b.durationMs, direction);
  case TSortKey::kPath:
    return compare(a.path, b.path, direction);
  case TSortKey::kTrack:
    return compare(a.track, b.track, direction);
  }
  return 0;
}

bool comes_before(const TSongOrder& order, const TKeys& a, const TKeys& b) {
  for (const int difference : {compare_by(order, a, b), compare(a.album, b.album), compare_numbers(a.track, b.track),
                               compare(a.title, b.title), compare(a.path, b.path)}) {
    if (difference != 0) return difference < 0;
  }
  return false;
}

} // namespace

std::vector<int64> sorted_ids(const TSongs& songs, const TSongOrder& order) {
  const QLocale user;
  QCollator collator(user.language() == QLocale::C ? QLocale(QLocale::English) : user); // C compares bytes
  collator.setNumericMode(true);
  collator.setCaseSensitivity(Qt::CaseInsensitive);
  std::vector<TKeys> keys;
  keys.reserve(songs.size());
  for (const TSong& song : songs) keys.push_back(keys_of(song, collator));
  std::ranges::stable_sort(keys, [&order](const TKeys& a, const TKeys& b) { return comes_before(order, a, b); });
  std::vector<int64> ids;
  for (const TKeys& one : keys) ids.push_back(one.id);
  return ids;
}
