#include "player/model/playlist.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace {

using TIds = std::unordered_set<int64>;

auto is_one_of(const TIds& ids) {
  return [&ids](const TSong& song) { return ids.contains(song.id); };
}

} // namespace

/** Copy on write: snapshots that were handed out never change. */
TSongs& TPlaylist::Own() {
  if (fSongs.use_count() > 1) fSongs = std::make_shared<TSongs>(*fSongs);
  return *fSongs;
}

void TPlaylist::Insert(TSongs songs, int32 before) {
  if (songs.empty()) return;
  if (before < 0 || before > Count()) before = Count();
  for (TSong& song : songs) song.id = ++fLastId;
  if (fCurrent >= before) fCurrent += static_cast<int32>(songs.size());
  TSongs& own = Own();
  own.insert(own.begin() + before, std::make_move_iterator(songs.begin()), std::make_move_iterator(songs.end()));
}

void TPlaylist::Append(TSongs songs, std::unordered_set<std::string>* added) {
  std::unordered_set<std::string> known;
  for (const TSong& song : *fSongs) known.insert(song.path);
  std::erase_if(songs, [&](const TSong& song) {
    if (known.contains(song.path) && !added->contains(song.path)) return true;
    added->insert(song.path);
    return false;
  });
  Insert(std::move(songs), -1);
}

void TPlaylist::TakeUp(TSongs songs) {
  std::unordered_set<std::string> before;
  for (const TSong& song : songs) before.insert(song.path);
  const TSong* const current = CurrentSong();
  const std::string playing = current ? current->path : std::string();
  TSongs& own = Own();
  std::erase_if(own, [&](const TSong& song) { return before.contains(song.path); });
  fCurrent = -1;
  Insert(std::move(songs), 0);
  if (!playing.empty()) fCurrent = Find(playing);
}

bool TPlaylist::Remove(const std::vector<int64>& ids) {
  const TIds doomed(ids.begin(), ids.end());
  TSongs& own = Own();
  const auto current = own.begin() + std::max(fCurrent, int32{0});
  const auto gone = std::count_if(own.begin(), current, is_one_of(doomed));
  const bool removed = std::erase_if(own, is_one_of(doomed)) > 0;
  fCurrent = std::min(fCurrent - static_cast<int32>(gone), Count() - 1);
  return removed;
}

bool TPlaylist::Move(const std::vector<int64>& ids, int32 before) {
  const TIds moving(ids.begin(), ids.end());
  const TSong* const current = CurrentSong();
  const int64 currentId = current ? current->id : 0;
  if (before < 0 || before > Count()) before = Count();
  const std::shared_ptr<const TSongs> old = fSongs;
  TSongs& own = Own();
  const auto place = own.begin() + before;
  std::stable_partition(own.begin(), place, [&](const TSong& song) { return !moving.contains(song.id); });
  std::stable_partition(place, own.end(), is_one_of(moving));
  fCurrent = IndexOf(currentId);
  return !std::equal(own.begin(), own.end(), old->begin(), old->end(),
                     [](const TSong& a, const TSong& b) { return a.id == b.id; });
}

bool TPlaylist::Arrange(const std::vector<int64>& ids) {
  const std::unordered_set<int64> different(ids.begin(), ids.end());
  const bool areAll = different.size() == fSongs->size() && ids.size() == fSongs->size() &&
                      std::ranges::all_of(*fSongs, is_one_of(different));
  if (!areAll || std::ranges::equal(ids, *fSongs, {}, {}, &TSong::id)) return false;
  std::unordered_map<int64, const TSong*> songs;
  for (const TSong& song : *fSongs) songs.emplace(song.id, &song);
  auto arranged = std::make_shared<TSongs>();
  for (const int64 id : ids) arranged->push_back(*songs.at(id));
  const TSong* const current = CurrentSong();
  const int64 currentId = current ? current->id : 0;
  fSongs = std::move(arranged);
  fCurrent = IndexOf(currentId);
  return true;
}

void TPlaylist::Clear() {
  fSongs = std::make_shared<TSongs>();
  fCurrent = -1;
}

const TSong* TPlaylist::At(int32 index) const {
  return index >= 0 && index < Count() ? &(*fSongs)[static_cast<size_t>(index)] : nullptr;
}

TSong* TPlaylist::Edit(int32 index) {
  return At(index) ? &Own()[static_cast<size_t>(index)] : nullptr;
}

int32 TPlaylist::IndexOf(int64 id) const {
  const auto found = std::find_if(fSongs->begin(), fSongs->end(), [=](const TSong& song) { return song.id == id; });
  return found == fSongs->end() ? -1 : static_cast<int32>(found - fSongs->begin());
}

int32 TPlaylist::Find(const std::string& path) const {
  const auto found = std::find_if(fSongs->begin(), fSongs->end(), [&](const TSong& song) { return song.path == path; });
  return found == fSongs->end() ? -1 : static_cast<int32>(found - fSongs->begin());
}

bool TPlaylist::SetCurrent(int32 index) {
  if (At(index) == nullptr) return false;
  fCurrent = index;
  return true;
}

int32 TPlaylist::GoodFrom(int32 index, int32 direction) const {
  while (At(index) && !At(index)->error.empty()) index += direction;
  return At(index) ? index : -1;
}
