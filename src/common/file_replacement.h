#pragma once

#include "platform/support/types.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

/** A path with all symbolic links resolved, and the existing file there, if any. */
struct TFileTarget {
  std::string path;
  std::optional<struct stat> old;
};

/** B_OK if a file can be written there: none exists, or it is a regular file that this user may write. Sets the path
    also on failure. */
[[nodiscard]] status_t find_file_target(const std::string& path, TFileTarget* target);

/** Writes all bytes, without fsync. */
[[nodiscard]] status_t write_all(int file, std::string_view bytes);

/** The folder part of a path; "." if it has none. */
std::string folder_of(const std::string& path);

/** The path of another file in the same folder: the file's name, truncated at its start if too long, plus `suffix`. */
[[nodiscard]] std::string name_beside(const std::string& path, const std::string& suffix);

/** An atomic replacement of a file with a single name, in steps, so that many files can share one flush: a temporary
    file is written next to the target and renamed over it. Until `Commit` the old file is unchanged; without a commit
    the destructor removes the temporary file. Not thread-safe. */
class TFileReplacement {
public:
  TFileReplacement() = default;
  TFileReplacement(TFileReplacement&& other) noexcept;
  TFileReplacement& operator=(TFileReplacement&& other) noexcept;
  ~TFileReplacement();

  /** Writes the temporary file, with the target's permissions, extended attributes and, where allowed, its owner.
      Without `flush` the caller must flush it before the commit. */
  [[nodiscard]] status_t Write(TFileTarget target, std::string_view bytes, bool flush);
  /** The same for content that `fill` writes to the empty file, which is also open for reading. */
  [[nodiscard]] status_t WriteBy(TFileTarget target, const std::function<status_t(int file)>& fill, bool flush);
  [[nodiscard]] status_t Commit();
  const TFileTarget& Target() const { return fTarget; }

private:
  TFileTarget fTarget;
  std::string fWritten; // path of the temporary file; empty if there is none
};
