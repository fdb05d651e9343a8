#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

struct TSong {
  int64 id = 0; // given by the list; never used twice
  std::string path;
  std::string title; // the file's name without its extension, until its tags are known
  std::string artist;
  int32 durationMs = 0;
  bool played = false;
  std::string fault; // why it cannot be played, in a few words; empty while nothing speaks against it
};

using TSongs = std::vector<TSong>;

/** The songs in their order, and which one is current. Knows no sound. One thread; the songs themselves are handed out
    as they are at that moment, and any thread may read them. */
class TPlaylist {
public:
  /** Puts the songs before that place; a place outside the list means its end. */
  void Insert(TSongs songs, int32 before);
  /** Puts those at the end that are not in the list yet. `added` holds the paths that earlier calls have added: such a
      song is wanted more than once. */
  void Append(TSongs songs, std::unordered_set<std::string>* added);
  /** Those songs first, then those of the list that are not among them. A current song stays current. */
  void TakeUp(TSongs songs);
  /** False when none of them was there. The song after the current one becomes current in its place. */
  bool Remove(const std::vector<int64>& ids);
  /** In the order of the list. False when nothing changes its place. */
  bool Move(const std::vector<int64>& ids, int32 before);
  void Clear();

  int32 Count() const { return static_cast<int32>(fSongs->size()); }
  /** Null outside the list. Lasts until the next change. */
  const TSong* At(int32 index) const;
  TSong* Edit(int32 index);
  /** -1: not there. */
  int32 Find(const std::string& path) const;
  int32 IndexOf(int64 id) const;
  /** Another pointer after every change. */
  std::shared_ptr<const TSongs> Songs() const { return fSongs; }

  /** -1: none. */
  int32 Current() const { return fCurrent; }
  const TSong* CurrentSong() const { return At(fCurrent); }
  bool SetCurrent(int32 index);
  /** The next song in that direction (1 or -1) that did not fail; -1 when there is none. */
  int32 Neighbour(int32 direction) const { return GoodFrom(fCurrent + direction, direction); }
  /** The same, this one included. */
  int32 GoodFrom(int32 index, int32 direction = 1) const;

private:
  TSongs& Own();

  std::shared_ptr<TSongs> fSongs = std::make_shared<TSongs>();
  int32 fCurrent = -1;
  int64 fLastId = 0;
};
