#pragma once

#include "songtags/song_lyrics.h"
#include "songtags/songtags_program.h"

/** The commands of vesmo-songtags. This process opens, copies and replaces files; their content is only looked at in a
    sandbox (songtags/helper/song_in_sandbox.h). */

TSongStatus read_song(const std::string& path, TLyricsInSong* lyrics);

/** Writes the lyrics into a copy of the song, reads the copy again, and renames it over the song if it has these lyrics
    and otherwise the same tags. The song must still be in the state in which it was read. Its permissions, extended
    attributes and, where allowed, the owner are kept; the modification time becomes that of the change, so that players
    and backups notice it. Refuses links, and files with several names. */
TSongStatus write_song(const std::string& path, const std::string& state, const std::string& text);
