#pragma once

#include "platform/support/types.h"

/** One entry of the player's playlist. Copied by value: the copies share the two texts, owned by the filler,
    which frees them with delete[] before it fills the record again. */
struct SonivoSongEntry {
  char* filename = nullptr; // the song file's path; may be null
  char* title = nullptr;    // may be null
  int32 time = 0;           // the length, in the player's own unit
  int32 nr = 0;
  bool played = false;
};
