#pragma once

#include "lyrics/digest.h"
#include "platform/support/types.h"

#include <atomic>
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
  /** Under whichever name. */
  bool IsSameFile(const TFileState& other) const { return device == other.device && inode == other.inode; }
};

/** Identity, size and time of the open file, with the digest of the bytes that were read from it. */
TFileState file_state(int descriptor, std::string_view bytes);

/** What is found under a path. */
enum class TFileKind {
  kRegular,
  kMissing,
  kFolderMissing, // also when it is not mounted
  kNotRegular,    // a folder, pipe or device
  kUnreadable,
  kTooLarge,
  kNoAnswer, // the disk or server does not answer; only reported by those who do not wait for it
};

struct TFileLook {
  TFileKind kind = TFileKind::kMissing;
  std::optional<TFileState> state; // of a regular file
};

/** Reads the whole file, without keeping its bytes. Blocks as long as the disk takes; `progress`, if any, is increased
    with every part that was read. */
TFileLook look_at_file(const std::string& path, int64 maxSize, std::atomic<int64>* progress = nullptr);
