#pragma once

#include "confined/regular_file.h"

#include <string>
#include <vector>

/** A song and the possible covers next to it, opened for reading. */
struct TSongFile {
  UniqueFd sound;   // empty if it cannot be opened or is no regular file
  std::string name; // without folder; a hint for detecting the format
  std::vector<UniqueFd> covers;

  std::vector<int> Descriptors() const;
};

TSongFile open_song(const std::string& path);
