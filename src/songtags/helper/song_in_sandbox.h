#pragma once

#include "songtags/song_lyrics.h"

/** Work on the tags of an open file, each in a sandboxed child process (confined/confined_work.h). */

struct TSeenTags {
  TLyricsInSong lyrics;  // without state
  std::string otherTags; // a digest
};

/** Nothing if the file is too much for the sandbox's limits or crashes the tag library. */
std::optional<TSeenTags> read_in_sandbox(int file);
/** The same with the lyrics only. */
std::optional<TLyricsInSong> read_lyrics_in_sandbox(int file);

/** `file` is a copy of a song, open for reading and writing. False if the lyrics could not be written; then the copy
   may be damaged. */
[[nodiscard]] bool write_in_sandbox(int file, const std::string& text);
