#include "player/pictures/picture_cache.h"

#include "common/song_cache.h"

#include <filesystem>

std::string cached_picture_path(const std::string& song) {
  return cached_song_file(song, {}, "snpk");
}

std::string cover_file_beside(const std::string& keptPicture) {
  return std::filesystem::path(keptPicture).replace_extension(".jpg").string();
}
