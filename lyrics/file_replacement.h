#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

/** What a path leads to: the end of its chain of symbolic links, and what stands there, if anything does. */
struct TFileTarget {
  std::string path;
  std::optional<struct stat> old;
};

/** B_OK when a file there may be written anew: there is none yet, or an ordinary one that this user may write. */
[[nodiscard]] status_t find_file_target(const std::string& path, TFileTarget* target);

/** Writes all of it; what is written so far may lie in memory only. */
[[nodiscard]] status_t write_all(int file, std::string_view bytes);

/** Another name for a file in its folder: its own, or the end of a very long one, and `more`. */
[[nodiscard]] std::string name_beside(const std::string& path, const std::string& more);

/** A new file that takes the place of an old one of a single name, in steps, so that the middle one can be shared by
    many files. Until `Commit` the old file is untouched, and what was never committed is taken away again. One thread
    at a time. */
class TFileReplacement {
public:
  TFileReplacement() = default;
  TFileReplacement(TFileReplacement&& other) noexcept;
  TFileReplacement& operator=(TFileReplacement&& other) noexcept;
  ~TFileReplacement();

  /** Writes the new file beside the target, with its permissions, extended attributes and, where allowed, its owner.
      With `flush` its bytes lie on the disk when this returns; otherwise the caller sees to that before it commits. */
  [[nodiscard]] status_t Write(TFileTarget target, std::string_view bytes, bool flush);
  [[nodiscard]] status_t Commit();
  const TFileTarget& Target() const { return fTarget; }

private:
  TFileTarget fTarget;
  std::string fWritten; // empty while there is nothing to take away
};
