#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

struct TSong {
  std::string path;
  std::string title; // the file's name without its extension, until its tags are known
  std::string artist;
  int32 durationMs = 0;
  bool played = false;
  bool failed = false; // could not be played when it was last tried
};

/** The songs in their order, and which one is current. Knows no sound. One thread. */
class TPlaylist {
public:
  /** A file is taken as it is; a folder gives its audio files and those of its folders, in byte order. Returns how many
      songs were added. */
  int32 Add(const std::string& path);

  int32 Count() const { return static_cast<int32>(fSongs.size()); }
  /** Null outside the list. */
  TSong* At(int32 index);
  const TSong* At(int32 index) const { return const_cast<TPlaylist*>(this)->At(index); }
  const std::vector<TSong>& Songs() const { return fSongs; }

  /** -1: none. */
  int32 Current() const { return fCurrent; }
  TSong* CurrentSong() { return At(fCurrent); }
  bool SetCurrent(int32 index);
  /** The next song in that direction (1 or -1) that did not fail; -1 when there is none. */
  int32 Neighbour(int32 direction) const;

private:
  std::vector<TSong> fSongs;
  int32 fCurrent = -1;
};

/** True for names that end like an audio file's. */
bool is_audio_name(const std::string& path);
