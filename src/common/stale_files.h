#pragma once

#include "platform/kernel/unique_fd.h"

#include <string>
#include <sys/types.h>
#include <vector>

/** Temporary files in a folder, left by processes that were killed while they replaced a file. The folder is read once,
    for any number of files. Not thread-safe. */
class TStaleFiles {
public:
  explicit TStaleFiles(const std::string& folder);

  /** Removes the temporary files of that file, if they are regular, of this user, and have no other hard link. */
  void RemoveThoseOf(const std::string& path) const;

private:
  struct TStale {
    std::string name;
    std::string target; // the name of the file that was being replaced
  };
  UniqueFd fFolder;
  std::vector<TStale> fStale;
};
