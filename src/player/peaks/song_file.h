#pragma once

#include "platform/kernel/unique_fd.h"

#include <string>
#include <vector>

/** A song's file and the pictures next to it that may be its cover, opened for reading. */
struct TSongFile {
  UniqueFd sound;   // none when it cannot be opened or is no regular file
  std::string name; // without its folder; what kind of file it is may show in it
  std::vector<UniqueFd> covers;

  std::vector<int> Descriptors() const;
};

/** None for what is no regular file; never waits for the other end of a pipe. */
UniqueFd open_regular_file(const std::string& path);
TSongFile open_song(const std::string& path);
