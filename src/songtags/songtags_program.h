#pragma once

#include "songtags/song_lyrics.h"

#include <stop_token>

/** Reads and writes lyrics inside songs through the program vesmo-songtags, which is next to the running program. Each
    call starts a process and waits for it; a song that crashes the tag library costs only that process. Thread-safe. */

/** Also the exit status of the program. */
enum class TSongStatus : int {
  kDone = 0,
  kNotSupported = 10, // no song, or of a format without such lyrics
  kNotFound,
  kNoPermission,
  kIsLink,   // symbolic, or with several hard links
  kChanged,  // since it was read
  kTooLarge, // the song or the lyrics
  kDamaged,
  kOtherTags, // would not all stay the same
  kDiskFull,
  kFailed // anything else: the program is missing, crashed or took too long, or the disk failed
};

struct TSongReading {
  TSongStatus status = TSongStatus::kFailed;
  TLyricsInSong lyrics;
};

/** When stopped, the process is killed and the status is kFailed. */
TSongReading read_song_lyrics(const std::string& path, const std::stop_token& stop = {});

/** Replaces the lyrics of the song, which must be in the state in which it was read. Whenever it is interrupted, the
    song is either the old or the new one, complete. */
TSongStatus write_song_lyrics(const std::string& path, const std::string& state, const std::string& text,
                              const std::stop_token& stop = {});
