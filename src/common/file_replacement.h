#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

/** What a path leads to: the end of its chain of symbolic links, and the file there, if there is one. */
struct TFileTarget {
  std::string path;
  std::optional<struct stat> old;
};

/** B_OK when a file can be written there: there is none yet, or a regular one that this user may write. Sets the path
    also when it fails. */
[[nodiscard]] status_t find_file_target(const std::string& path, TFileTarget* target);

/** Writes all of it; without a later fsync the bytes may be in memory only. */
[[nodiscard]] status_t write_all(int file, std::string_view bytes);

/** The folder part of a path, "." where it has none. */
std::string folder_of(const std::string& path);

/** The name of another file in the same folder: the file's own name, or the end of a very long one, and `suffix`. */
[[nodiscard]] std::string name_beside(const std::string& path, const std::string& suffix);

/** An atomic replacement of a file with a single name, in steps, so that many files can share one flush: a temporary
    file is written beside the target and renamed over it. Until `Commit` the old file is untouched; without a commit
    the destructor removes the temporary file. One thread at a time. */
class TFileReplacement {
public:
  TFileReplacement() = default;
  TFileReplacement(TFileReplacement&& other) noexcept;
  TFileReplacement& operator=(TFileReplacement&& other) noexcept;
  ~TFileReplacement();

  /** Writes the temporary file, with the target's permissions, extended attributes and, where allowed, its owner.
      With `flush` the bytes are on the disk when this returns; otherwise the caller flushes before the commit. */
  [[nodiscard]] status_t Write(TFileTarget target, std::string_view bytes, bool flush);
  [[nodiscard]] status_t Commit();
  const TFileTarget& Target() const { return fTarget; }

private:
  TFileTarget fTarget;
  std::string fWritten; // the temporary file; empty while there is none
};
