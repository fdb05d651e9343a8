#pragma once

#include "platform/support/types.h"

#include <string>

class BFile;

/** The MIME type of an open file, stored in the extended attribute "user.mime_type". Does not own the file. */
class BNodeInfo {
public:
  explicit BNodeInfo(BFile* file) : fFile(file) {}

  /** B_ENTRY_NOT_FOUND when the file has no type. */
  [[nodiscard]] status_t GetType(std::string* type) const;
  /** B_PERMISSION_DENIED or B_IO_ERROR also when the file system has no attributes; a file without a type is as good,
     so callers may ignore the status. */
  status_t SetType(const char* type);

private:
  BFile* fFile;
};
