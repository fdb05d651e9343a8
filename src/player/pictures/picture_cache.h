#pragma once

#include <string>

/** The cache file for the picture of this song in its current state (size, modification time); empty if there is no
    such song. */
std::string cached_picture_path(const std::string& song);

/** The cache file for that song's cover, as an image that other programs can show. */
std::string cover_file_beside(const std::string& keptPicture);
