#include "player/peaks/song_file.h"

#include <filesystem>

namespace {
constexpr const char* kCoverNames[] = {"cover.jpg", "cover.png", "folder.jpg", "folder.png",
                                       "front.jpg", "front.png", "Cover.jpg",  "Folder.jpg"};
}

std::vector<int> TSongFile::Descriptors() const {
  std::vector<int> descriptors{sound.Get()};
  for (const UniqueFd& cover : covers) descriptors.push_back(cover.Get());
  return descriptors;
}

TSongFile open_song(const std::string& path) {
  const std::filesystem::path song(path);
  TSongFile file{open_regular_file(path), song.filename().string(), {}};
  for (const char* const name : kCoverNames) {
    if (UniqueFd cover = open_regular_file(song.parent_path() / name)) file.covers.push_back(std::move(cover));
  }
  return file;
}
