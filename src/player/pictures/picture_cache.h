#pragma once

#include <cstdint>
#include <string>

/** Where the picture of this song, as the file is now, is kept below the user's cache folder; empty when there is no
    such file. */
std::string cached_picture_path(const std::string& song);

/** Where that song's cover is kept as a file that other programs can show. */
std::string cover_file_beside(const std::string& keptPicture);

/** Writes it there atomically, and drops those used longest ago until all together are no larger than `limit`. */
void keep_picture(const std::string& path, const std::string& bytes, uintmax_t limit);
