#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>

/** What is on the disk, safe from a power cut, when a file was replaced. */
enum class TFlush {
  kNothing,      // caches: whatever is lost is made again
  kFile,         // after a power cut either the old file or the new one is there
  kFileAndFolder // the new one is there
};

/** Replaces a file atomically: the bytes are written to a temporary file beside it, which is flushed and renamed over
    it, so that a failure leaves the old file whole and nothing else behind. Permissions, extended attributes (the file
    type among them) and, where allowed, the owner are kept; a symbolic link stays one and its target is replaced; a new
    file gets the default permissions. What a killed process left from replacing the same file is removed.
    A file with several hard links, or in a folder in which no file can be created, is written in place, after a safety
    copy (safety_copy.h) that is restored when that fails. Any thread. */
[[nodiscard]] status_t atomic_replace(const std::string& path, std::string_view bytes,
                                      TFlush flush = TFlush::kFileAndFolder);

/** True when the file is there and holds exactly `bytes`. */
[[nodiscard]] bool file_holds(const std::string& path, std::string_view bytes);
