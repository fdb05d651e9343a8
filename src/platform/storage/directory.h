#pragma once

#include "platform/storage/entry.h"

#include <string>
#include <vector>

/** A folder; `GetNextEntry` walks its entries in byte order of their names, without "." and "..". */
class BDirectory {
public:
  BDirectory() = default;
  explicit BDirectory(const char* path);

  status_t SetTo(const char* path);
  status_t InitCheck() const { return fStatus; }
  /** B_ENTRY_NOT_FOUND after the last entry. */
  status_t GetNextEntry(BEntry* entry, bool traverse = false);
  status_t Rewind();
  const std::string& Path() const { return fPath; }

private:
  std::string fPath;
  std::vector<std::string> fNames;
  size_t fNext = 0;
  status_t fStatus = B_NO_INIT;
};

/** Makes the folder and every missing parent; success when it is there already. */
status_t create_directory(const char* path, uint32 mode);
