#pragma once

#include "player/model/playlist.h"

#include <string>

/** Takes what is found, in its order. Called by whoever gathers. */
class TSongTaker {
public:
  TSongTaker() = default;
  TSongTaker(const TSongTaker&) = delete;
  TSongTaker& operator=(const TSongTaker&) = delete;
  virtual ~TSongTaker() = default;
  virtual void Take(TSong song) = 0;
  /** What could not be taken, in a line. */
  virtual void TellFault(std::string fault) = 0;
  /** Nobody waits for more. */
  virtual bool HasEnough() const = 0;
};

/** `text` names what was opened, dropped or handed over (player/song_address.h). A file is taken as it is; a folder
   gives its audio files and those of its folders, in byte order; a list of songs gives its songs and those of the lists
   it names. What is no song's address, no regular file, or missing from a list is kept, with its fault. Reads no sound
    file. Any thread. */
void gather_songs(const std::string& text, TSongTaker* taker);

/** True for names that end like an audio file's. */
bool is_audio_name(const std::string& path);
/** True for names that end like a list of songs. */
bool is_list_name(const std::string& path);
