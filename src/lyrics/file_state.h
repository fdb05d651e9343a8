#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>
#include <string_view>

/** A file as it was at some moment: which file it is and which bytes it held. Compared, it shows whether another
    program has changed or replaced the file since. Any thread. */
struct TFileState {
  uint64 device = 0;
  uint64 inode = 0;
  int64 size = 0;
  int64 modifiedNs = 0;
  uint64 digest = 0; // of the bytes
  bool HasBytesOf(const TFileState& other) const { return size == other.size && digest == other.digest; }
};

/** A 64-bit digest (FNV-1a over words of 8 bytes), the same on every machine and in every version, so that it can be
    stored. Detects changes; not cryptographic. */
uint64 digest_of(std::string_view bytes);

/** Identity, size and time of the open file, with the digest of the bytes that were read from it. */
TFileState file_state(int descriptor, std::string_view bytes);
/** Reads the whole file. Nothing when it cannot be read, is no regular file, or is larger than `maxSize`. */
std::optional<TFileState> file_state(const std::string& path, int64 maxSize);
