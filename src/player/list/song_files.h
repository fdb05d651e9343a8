#pragma once

#include "player/model/playlist.h"

#include <string>

/** One call of gather_songs or gather_folder finds no more than these. */
inline constexpr size_t kMostSongs = 200000;

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
  /** Called before a folder is read; false to skip it and all that is below. */
  virtual bool Enters(const std::string& /*folder*/) { return true; }
};

/** Finds the songs that `text` refers to, which was opened, dropped or handed over (player/model/song_address.h): a
    file itself; a folder's audio files, recursively, in byte order; the songs of a playlist and of the playlists in it.
    What is refused, no regular file, or missing is kept with its error. Opens no audio file. Any thread. */
void gather_songs(const std::string& text, TSongTaker* taker);

/** Finds the audio files of a folder in the same way; that there are none is no error. Any thread. */
void gather_folder(const std::string& folder, TSongTaker* taker);

/** Whether the extension is that of an audio file. */
bool is_audio_name(const std::string& path);
/** Whether the extension is that of a playlist. */
bool is_list_name(const std::string& path);
