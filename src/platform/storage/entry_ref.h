#pragma once

#include "platform/support/types.h"

#include <string>

/** Refers to a file by the absolute path of its folder and its name; the file need not exist. A ref without a name is
    empty. */
struct entry_ref {
  std::string directory;
  std::string name;

  bool IsEmpty() const { return name.empty(); }
  /** The absolute path; empty for an empty ref. */
  std::string FullPath() const;

  friend bool operator==(const entry_ref&, const entry_ref&) = default;
};

/** Makes `path` absolute, relative to the current folder, and splits it. B_BAD_VALUE, and
    `ref` unchanged, for an empty path. */
status_t get_ref_for_path(const char* path, entry_ref* ref);
