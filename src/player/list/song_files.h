#pragma once

#include "player/model/playlist.h"

#include <string>

/** Receives what gather_songs finds, in order, on its thread. */
class TSongTaker {
public:
  TSongTaker() = default;
  TSongTaker(const TSongTaker&) = delete;
  TSongTaker& operator=(const TSongTaker&) = delete;
  virtual ~TSongTaker() = default;
  virtual void Take(TSong song) = 0;
  /** One line. */
  virtual void ReportError(std::string error) = 0;
  /** True to cancel. */
  virtual bool HasEnough() const = 0;
};

/** Finds the songs that `text` refers to, which was opened, dropped or handed over (player/model/song_address.h): a
    file itself; a folder's audio files, recursively, in byte order; the songs of a playlist and of the playlists in it.
    What is refused, no regular file, or missing is kept with its error. Opens no audio file. Any thread. */
void gather_songs(const std::string& text, TSongTaker* taker);

/** Whether the extension is that of an audio file. */
bool is_audio_name(const std::string& path);
/** Whether the extension is that of a playlist. */
bool is_list_name(const std::string& path);
