#pragma once

#include "platform/support/types.h"

#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>

/** The file operations of a journal, so that tests can inject failures and power cuts. */

/** A journal on the disk, locked until the object is deleted, also by the end of the process. */
class TJournalFile {
public:
  TJournalFile() = default;
  TJournalFile(const TJournalFile&) = delete;
  TJournalFile& operator=(const TJournalFile&) = delete;
  virtual ~TJournalFile() = default;

  /** False if not everything could be written. */
  virtual bool Append(std::string_view bytes) = 0;
  /** Flushes what was appended, and the name, to the disk. May be called on another thread. */
  virtual bool Flush() = 0;
  /** The number of bytes read, 0 at the end, negative for an error. */
  virtual ssize_t Read(off_t from, char* bytes, size_t size) const = 0;
  /** Removes the name; the bytes can be read until the object is deleted. */
  virtual void Remove() = 0;
};

class TJournalDisk {
public:
  TJournalDisk() = default;
  TJournalDisk(const TJournalDisk&) = delete;
  TJournalDisk& operator=(const TJournalDisk&) = delete;
  virtual ~TJournalDisk() = default;

  /** A new, empty, locked file under an unused name; null on failure. */
  virtual std::shared_ptr<TJournalFile> Create() = 0;
};
