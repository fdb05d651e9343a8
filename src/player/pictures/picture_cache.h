#pragma once

#include <cstdint>
#include <string>

/** The cache file for the picture of this song in its current state (size, modification time); empty if there is no
    such song. */
std::string cached_picture_path(const std::string& song);

/** The cache file for that song's cover, as an image that other programs can show. */
std::string cover_file_beside(const std::string& keptPicture);

/** Writes the file atomically, then evicts the least recently used ones (LRU) until the folder is within `limit`
    bytes. */
void keep_picture(const std::string& path, const std::string& bytes, uintmax_t limit);
