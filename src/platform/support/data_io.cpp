#include "platform/support/data_io.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

BMemoryIO::BMemoryIO(const void* bytes, size_t size)
    : fBytes(static_cast<const char*>(bytes)), fSize(static_cast<off_t>(size)) {}

ssize_t BMemoryIO::Read(void* buffer, size_t size) {
  const size_t left = fPosition < fSize ? static_cast<size_t>(fSize - fPosition) : 0;
  const size_t count = std::min(size, left);
  if (count > 0) std::memcpy(buffer, fBytes + fPosition, count);
  fPosition += static_cast<off_t>(count);
  return static_cast<ssize_t>(count);
}

ssize_t BMemoryIO::Write(const void*, size_t) {
  return B_PERMISSION_DENIED;
}

off_t BMemoryIO::Seek(off_t position, uint32 mode) {
  if (mode != SEEK_SET && mode != SEEK_CUR && mode != SEEK_END) return B_BAD_VALUE;
  const off_t target = position + (mode == SEEK_CUR ? fPosition : mode == SEEK_END ? fSize : 0);
  if (target < 0) return B_BAD_VALUE;
  return fPosition = target; // may be past the end
}

status_t BMemoryIO::SetSize(off_t) {
  return B_PERMISSION_DENIED;
}

status_t BMemoryIO::GetSize(off_t* size) const {
  *size = fSize;
  return B_OK;
}
