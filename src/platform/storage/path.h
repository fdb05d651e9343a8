#pragma once

#include "platform/support/types.h"

#include <string>

/** A normalized absolute path. Accesses the file system only to make a relative path absolute. */
class BPath {
public:
  BPath() = default;
  explicit BPath(const char* path, const char* leaf = nullptr);

  /** The path is unset after an error, which `InitCheck` shows, too. */
  status_t SetTo(const char* path, const char* leaf = nullptr);
  [[nodiscard]] status_t Append(const char* leaf);
  [[nodiscard]] status_t GetParent(BPath* parent) const;
  /** The last component; empty for an unset path. */
  const char* Leaf() const;
  const char* Path() const { return fPath.c_str(); }
  status_t InitCheck() const { return fPath.empty() ? B_NO_INIT : B_OK; }

private:
  std::string fPath;
};
