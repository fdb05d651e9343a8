#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>

/** What is flushed to the disk before the call returns, and so survives a power cut. */
enum class TFlush {
  kNothing,      // for caches, which can be rebuilt
  kFile,         // after a power cut either the old or the new file exists
  kFileAndFolder // the new file exists
};

/** Replaces a file atomically: the bytes are written to a temporary file in the same folder, which is flushed and
    renamed over it, so that after a failure the old file is intact and nothing else is left. Permissions, extended
    attributes (the file type among them) and, where allowed, the owner are kept; the target of a symbolic link is
    replaced; a new file gets the default permissions. Temporary files that a killed process left for the same file are
    removed. A file with several hard links, or in a folder in which no file can be created, is written in place, after
    a safety copy (safety_copy.h) that is restored when that fails. Any thread. */
[[nodiscard]] status_t atomic_replace(const std::string& path, std::string_view bytes,
                                      TFlush flush = TFlush::kFileAndFolder);

/** True if the file exists and consists of exactly `bytes`. */
[[nodiscard]] bool file_holds(const std::string& path, std::string_view bytes);
