#include "platform/support/data_io.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

/** Where a seek leads, or a negative status; a stream may be left behind its end. */
off_t seek_target(off_t position, uint32 mode, off_t current, off_t size) {
  const off_t base = mode == SEEK_CUR ? current : mode == SEEK_END ? size : 0;
  if (mode != SEEK_SET && mode != SEEK_CUR && mode != SEEK_END) return B_BAD_VALUE;
  return base + position < 0 ? static_cast<off_t>(B_BAD_VALUE) : base + position;
}

size_t bytes_left(off_t position, off_t size) {
  return position >= size ? 0 : static_cast<size_t>(size - position);
}

} // namespace

ssize_t BMallocIO::Read(void* buffer, size_t size) {
  const size_t count = std::min(size, bytes_left(fPosition, static_cast<off_t>(fBytes.size())));
  if (count > 0) std::memcpy(buffer, fBytes.data() + fPosition, count);
  fPosition += static_cast<off_t>(count);
  return static_cast<ssize_t>(count);
}

ssize_t BMallocIO::Write(const void* buffer, size_t size) {
  const size_t end = static_cast<size_t>(fPosition) + size;
  if (end > fBytes.size()) fBytes.resize(end);
  if (size > 0) std::memcpy(fBytes.data() + fPosition, buffer, size);
  fPosition = static_cast<off_t>(end);
  return static_cast<ssize_t>(size);
}

off_t BMallocIO::Seek(off_t position, uint32 mode) {
  const off_t target = seek_target(position, mode, fPosition, static_cast<off_t>(fBytes.size()));
  if (target >= 0) fPosition = target;
  return target;
}

status_t BMallocIO::SetSize(off_t size) {
  if (size < 0) return B_BAD_VALUE;
  fBytes.resize(static_cast<size_t>(size));
  return B_OK;
}

status_t BMallocIO::GetSize(off_t* size) const {
  *size = static_cast<off_t>(fBytes.size());
  return B_OK;
}

BMemoryIO::BMemoryIO(const void* bytes, size_t size)
    : fRead(static_cast<const char*>(bytes)), fWrite(nullptr), fSize(static_cast<off_t>(size)) {}

BMemoryIO::BMemoryIO(void* bytes, size_t size)
    : fRead(static_cast<const char*>(bytes)), fWrite(static_cast<char*>(bytes)), fSize(static_cast<off_t>(size)) {}

ssize_t BMemoryIO::Read(void* buffer, size_t size) {
  const size_t count = std::min(size, bytes_left(fPosition, fSize));
  if (count > 0) std::memcpy(buffer, fRead + fPosition, count);
  fPosition += static_cast<off_t>(count);
  return static_cast<ssize_t>(count);
}

ssize_t BMemoryIO::Write(const void* buffer, size_t size) {
  if (fWrite == nullptr) return B_PERMISSION_DENIED;
  const size_t count = std::min(size, bytes_left(fPosition, fSize));
  if (count > 0) std::memcpy(fWrite + fPosition, buffer, count);
  fPosition += static_cast<off_t>(count);
  return static_cast<ssize_t>(count);
}

off_t BMemoryIO::Seek(off_t position, uint32 mode) {
  const off_t target = seek_target(position, mode, fPosition, fSize);
  if (target >= 0) fPosition = target;
  return target;
}

status_t BMemoryIO::SetSize(off_t size) {
  return size == fSize ? B_OK : B_ERROR;
}

status_t BMemoryIO::GetSize(off_t* size) const {
  *size = fSize;
  return B_OK;
}
