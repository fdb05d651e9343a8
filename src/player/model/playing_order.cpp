#include "player/model/playing_order.h"

#include <algorithm>
#include <unordered_set>

void TPlayingOrder::SetModes(const TPlayingModes& modes) {
  const bool begins = modes.shuffles && !fModes.shuffles;
  fModes = modes;
  if (!modes.shuffles || begins) {
    fKnown = nullptr;
    fRows.clear();
    fRound.clear();
    fPlace = -1;
  }
  if (begins) SongBegins();
}

int32 TPlayingOrder::SkipTarget(int direction) {
  if (fModes.shuffles) {
    Update();
    return NextShuffled(direction);
  }
  const int32 next = fSongs->Neighbour(direction);
  if (next >= 0 || fModes.repeat != TRepeat::kList) return next;
  return fSongs->GoodFrom(direction > 0 ? 0 : fSongs->Count() - 1, direction);
}

int32 TPlayingOrder::SongAfterEnd() {
  if (fModes.stopsAfterSong) return -1;
  const TSong* const song = fSongs->CurrentSong();
  if (fModes.repeat == TRepeat::kSong && song && song->error.empty()) return fSongs->Current();
  return SkipTarget(1);
}

/** Takes up changes of the list. If the current song was removed, the one before it is at fPlace. */
void TPlayingOrder::Update() {
  if (fKnown == fSongs->Songs()) return;
  fKnown = fSongs->Songs();
  fRows.clear();
  for (const TSong& song : *fKnown) fRows.emplace(song.id, static_cast<int32>(fRows.size()));
  const auto isGone = [this](int64 id) { return !fRows.contains(id); };
  fPlace -= std::count_if(fRound.begin(), fRound.begin() + (fPlace + 1), isGone);
  std::erase_if(fRound, isGone);
  const int64 before = Count();
  const std::unordered_set<int64> known(fRound.begin(), fRound.end());
  for (const TSong& song : *fKnown) {
    if (!known.contains(song.id)) fRound.push_back(song.id);
  }
  if (Count() > before) Shuffle(fPlace + 1, Count());
}

void TPlayingOrder::Shuffle(int64 from, int64 to) {
  if (from < to) std::shuffle(fRound.begin() + from, fRound.begin() + to, fDice);
}

int32 TPlayingOrder::NextShuffled(int direction) const {
  const int64 count = Count();
  for (int64 step = 1; step <= count; ++step) {
    const int64 place = fPlace + step * direction;
    const bool isInRound = place >= 0 && place < count;
    if (!isInRound && fModes.repeat != TRepeat::kList) return -1;
    const int32 row = fRows.at(fRound[static_cast<size_t>((place % count + count) % count)]);
    if (fSongs->At(row)->error.empty()) return row;
  }
  return -1;
}

/** A song that was picked out of turn is moved behind the previous one. With the last song of a round that is repeated,
    the next round gets another order; only the song before it stays where it is, for going back. */
void TPlayingOrder::SongBegins() {
  if (!fModes.shuffles) return;
  Update();
  const TSong* const song = fSongs->CurrentSong();
  if (song == nullptr) return;
  const auto at = std::ranges::find(fRound, song->id);
  const int64 place = at - fRound.begin();
  if (NextShuffled(1) == fSongs->Current() || NextShuffled(-1) == fSongs->Current()) {
    fPlace = place;
  } else if (place > fPlace) {
    std::rotate(fRound.begin() + (fPlace + 1), at, at + 1);
    ++fPlace;
  } else {
    std::rotate(at, at + 1, fRound.begin() + (fPlace + 1));
  }
  if (fModes.repeat == TRepeat::kList && fPlace + 1 == Count()) Shuffle(0, Count() - 2);
}
