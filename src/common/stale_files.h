#pragma once

#include "platform/kernel/unique_fd.h"

#include <string>
#include <sys/types.h>
#include <vector>

/** The temporary files in a folder that processes which no longer exist left when they were killed while replacing a
    file. The folder is read once, so that many files can be asked for. One thread at a time. */
class TStaleFiles {
public:
  explicit TStaleFiles(const std::string& folder);

  /** Removes those that belong to the file; only regular files of this user with a single name. */
  void RemoveThoseOf(const std::string& path) const;

private:
  struct TStale {
    std::string name;
    std::string target; // the name of the file that was to be replaced
  };
  UniqueFd fFolder;
  std::vector<TStale> fStale;
};
