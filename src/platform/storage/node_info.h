#pragma once

#include "platform/support/types.h"

#include <string>

class BFile;

/** The file type of an open file, kept in the extended attribute "user.mime_type". */
class BNodeInfo {
public:
  explicit BNodeInfo(BFile* file) : fFile(file) {}

  /** B_ENTRY_NOT_FOUND when the file has no type. */
  status_t GetType(std::string* type) const;
  /** B_PERMISSION_DENIED or B_IO_ERROR also where the file system keeps no attributes. */
  status_t SetType(const char* type);

private:
  BFile* fFile;
};
