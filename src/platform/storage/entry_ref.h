#pragma once

#include "platform/support/types.h"

#include <string>

/** Names a file by its folder's absolute path and its own name; the file need not exist.
    A ref without a name is empty: it names nothing. */
struct entry_ref {
  std::string directory;
  std::string name;

  bool IsEmpty() const { return name.empty(); }
  /** The absolute path; empty for an empty ref. */
  std::string FullPath() const;

  friend bool operator==(const entry_ref&, const entry_ref&) = default;
};

/** Makes `path` absolute (against the current folder) and splits it. B_BAD_VALUE for an empty path. */
status_t get_ref_for_path(const char* path, entry_ref* ref);
