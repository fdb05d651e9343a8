#pragma once

#include "player/model/playlist.h"

#include <string>
#include <vector>

inline TSongs songs_of(const std::vector<std::string>& paths) {
  TSongs songs;
  for (const std::string& path : paths) songs.emplace_back().path = path;
  return songs;
}

inline std::vector<std::string> paths_of(const TSongs& songs) {
  std::vector<std::string> paths;
  for (const TSong& song : songs) paths.push_back(song.path);
  return paths;
}
