#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

struct TSong {
  int64 id = 0; // assigned by the list; never reused
  std::string path;
  std::string title; // the file name without its extension, until the tags are known
  std::string artist;
  std::string album = {};
  int32 track = 0; // within the album; 0 if unknown
  int32 durationMs = 0;
  bool played = false;
  std::string error; // why it cannot be played, in a few words; empty if nothing is known against it
};

using TSongs = std::vector<TSong>;

/** The songs in order, and which one is current. Independent of the sound. Used by one thread; the songs are handed out
    as immutable snapshots (copy on write), which any thread may read. */
class TPlaylist {
public:
  /** Inserts before that index; an index outside the list means its end. */
  void Insert(TSongs songs, int32 before);
  /** Appends the songs that are not in the list yet. `added` collects the paths that earlier calls have added: these
      are appended again. */
  void Append(TSongs songs, std::unordered_set<std::string>* added);
  /** Inserts the songs at the start and removes duplicates after them. The current song stays current. */
  void TakeUp(TSongs songs);
  /** False if none of them was in the list. If the current song is removed, the next one becomes current. */
  bool Remove(const std::vector<int64>& ids);
  /** Moves them before that index, in list order. False if the order does not change. */
  bool Move(const std::vector<int64>& ids, int32 before);
  /** Puts the songs into the order of these ids, which must be those of all songs. False if nothing changes. */
  bool Arrange(const std::vector<int64>& ids);
  void Clear();

  int32 Count() const { return static_cast<int32>(fSongs->size()); }
  /** Null outside the list. Valid until the next change. */
  const TSong* At(int32 index) const;
  TSong* Edit(int32 index);
  /** -1 if not found. */
  int32 Find(const std::string& path) const;
  int32 IndexOf(int64 id) const;
  /** A different pointer after every change. */
  std::shared_ptr<const TSongs> Songs() const { return fSongs; }

  /** -1 for none. */
  int32 Current() const { return fCurrent; }
  const TSong* CurrentSong() const { return At(fCurrent); }
  bool SetCurrent(int32 index);
  /** The next song in that direction (1 or -1) that can be played as far as known; -1 if there is none. */
  int32 Neighbour(int32 direction) const { return GoodFrom(fCurrent + direction, direction); }
  /** The same, starting with the song at `index`. */
  int32 GoodFrom(int32 index, int32 direction = 1) const;

private:
  TSongs& Own();

  std::shared_ptr<TSongs> fSongs = std::make_shared<TSongs>();
  int32 fCurrent = -1;
  int64 fLastId = 0;
};
