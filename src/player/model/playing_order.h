#pragma once

#include "player/model/playlist.h"

#include <cstdint>
#include <memory>
#include <random>
#include <unordered_map>
#include <vector>

enum class TRepeat : int32 { kOff, kSong, kList };

/** The user's choices of the order in which songs are played. */
struct TPlayingModes {
  bool shuffles = false;
  TRepeat repeat = TRepeat::kOff;
  /** Playback stops when the current song ends, this once. */
  bool stopsAfterSong = false;
  bool operator==(const TPlayingModes&) const = default;
};

/** Decides which song follows. Shuffled, each round plays every song once; songs that are added meanwhile come at
    random places of the rest of the round. Independent of the sound; application's thread. */
class TPlayingOrder {
public:
  /** `songs` outlives this. */
  explicit TPlayingOrder(const TPlaylist* songs, uint32_t seed = std::random_device()()) : fSongs(songs), fDice(seed) {}

  const TPlayingModes& Modes() const { return fModes; }
  void SetModes(const TPlayingModes& modes);
  /** The song that the user skips to, in that direction (1 or -1); -1 if there is none. */
  int32 SkipTarget(int direction);
  /** The song that follows the end of the current one; -1: playback stops. */
  int32 SongAfterEnd();
  /** The list's current song begins. */
  void SongBegins();

private:
  void Update();
  void Shuffle(int64 from, int64 to);
  int32 NextShuffled(int direction) const;
  int64 Count() const { return static_cast<int64>(fRound.size()); }

  const TPlaylist* const fSongs;
  TPlayingModes fModes;
  std::mt19937 fDice;
  // While shuffling.
  std::shared_ptr<const TSongs> fKnown;
  std::unordered_map<int64, int32> fRows; // of fKnown, by id
  std::vector<int64> fRound;              // ids, each once
  int64 fPlace = -1;                      // in fRound, of the song that began last; -1 before the first
};
