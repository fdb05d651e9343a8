#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/** Files in the user's cache folder that were made from songs. Thread-safe; blocks on the disk. */

/** The cache file of this song in its current state (size, modification time); empty if there is no such song, or no
    cache folder. Kinds of files with limits of their own have subfolders. */
std::string cached_song_file(const std::string& song, const std::string& subfolder, const std::string& extension);

/** Writes the file atomically, then evicts the least recently used ones (LRU) until its folder is within `limit`
    bytes. */
void keep_cached(const std::string& path, std::string_view bytes, uintmax_t limit);

/** The file's bytes; marks it as recently used. Nothing if it does not exist or is larger than `most`. */
std::optional<std::string> read_cached(const std::string& path, uintmax_t most);
