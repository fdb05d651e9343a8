#pragma once

#include "platform/storage/entry_ref.h"

class BDirectory;
class BPath;

/** A path in the file system, existing or not. Not thread-safe. */
class BEntry {
public:
  BEntry() = default;
  explicit BEntry(const char* path, bool traverse = false);
  explicit BEntry(const entry_ref* ref, bool traverse = false);

  /** `traverse` follows a symbolic link. The status is also that of `InitCheck`. */
  status_t SetTo(const char* path, bool traverse = false);
  status_t SetTo(const entry_ref* ref, bool traverse = false);
  status_t SetTo(const BDirectory* directory, const char* name, bool traverse = false);
  status_t InitCheck() const { return fStatus; }

  bool Exists() const;
  bool IsFile() const;
  bool IsDirectory() const;
  [[nodiscard]] status_t GetRef(entry_ref* ref) const;
  [[nodiscard]] status_t GetPath(BPath* path) const;
  std::string Name() const { return fRef.name; }
  [[nodiscard]] status_t GetSize(off_t* size) const;
  /** Since 1970. */
  [[nodiscard]] status_t GetModificationTime(int64* seconds, int32* nanoseconds = nullptr) const;

private:
  entry_ref fRef;
  status_t fStatus = B_NO_INIT;
};
