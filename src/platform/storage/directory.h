#pragma once

#include "platform/storage/entry.h"

#include <string>
#include <vector>

/** A folder; `GetNextEntry` iterates over the entries in byte order of their names, without "." and "..". The names are
    read once, by `SetTo` and `Rewind`. Not thread-safe. */
class BDirectory {
public:
  BDirectory() = default;
  explicit BDirectory(const char* path);

  status_t SetTo(const char* path);
  status_t InitCheck() const { return fStatus; }
  /** B_ENTRY_NOT_FOUND after the last entry. */
  [[nodiscard]] status_t GetNextEntry(BEntry* entry, bool traverse = false);
  status_t Rewind();
  const std::string& Path() const { return fPath; }

private:
  std::string fPath;
  std::vector<std::string> fNames;
  size_t fNext = 0;
  status_t fStatus = B_NO_INIT;
};

/** Creates the folder and every missing parent; B_OK when it exists already. */
[[nodiscard]] status_t create_directory(const char* path, uint32 mode);
