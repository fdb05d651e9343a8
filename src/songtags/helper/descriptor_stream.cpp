#include "songtags/helper/descriptor_stream.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {
constexpr long kPieceBytes = 1 << 20;
/** Larger than any tag that is handled. */
constexpr unsigned long kMostBytesAtOnce = 256 << 20;
} // namespace

TagLib::ByteVector TDescriptorStream::readBlock(unsigned long length) {
  const long rest = std::max(this->length() - fPosition, 0L);
  const unsigned long size = std::min({length, static_cast<unsigned long>(rest), kMostBytesAtOnce});
  TagLib::ByteVector data(static_cast<unsigned>(size), '\0');
  if (size == 0 || !ReadAt(fPosition, &data)) return {};
  fPosition += static_cast<long>(size);
  return data;
}

void TDescriptorStream::writeBlock(const TagLib::ByteVector& data) {
  WriteAt(fPosition, data);
  fPosition += data.size();
}

void TDescriptorStream::insert(const TagLib::ByteVector& data, unsigned long start, unsigned long replace) {
  const auto begin = static_cast<long>(start);
  const long end = std::min(begin + static_cast<long>(replace), length());
  MoveTail(end, begin + data.size());
  WriteAt(begin, data);
  fPosition = begin + data.size();
}

void TDescriptorStream::removeBlock(unsigned long start, unsigned long length) {
  insert({}, start, length);
}

void TDescriptorStream::seek(long offset, Position position) {
  const long base = position == Beginning ? 0 : position == Current ? fPosition : length();
  fPosition = std::max(base + offset, 0L);
}

long TDescriptorStream::length() {
  const off_t end = lseek(fFile, 0, SEEK_END);
  if (end < 0) fFailed = true;
  return std::max<long>(end, 0);
}

void TDescriptorStream::truncate(long length) {
  if (ftruncate(fFile, length) != 0) fFailed = true;
}

/** False, and the stream failed, if not all of it can be read. */
bool TDescriptorStream::ReadAt(long offset, TagLib::ByteVector* data) {
  for (unsigned done = 0; done < data->size();) {
    const ssize_t count = pread(fFile, data->data() + done, data->size() - done, offset + done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fFailed = true;
    if (fFailed) return false;
    done += static_cast<unsigned>(count);
  }
  return true;
}

void TDescriptorStream::WriteAt(long offset, const TagLib::ByteVector& data) {
  for (unsigned done = 0; done < data.size() && !fFailed;) {
    const ssize_t count = pwrite(fFile, data.data() + done, data.size() - done, offset + done);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) fFailed = true;
    done += static_cast<unsigned>(std::max<ssize_t>(count, 0));
  }
}

/** Moves everything from `from` to the end of the file, which becomes longer or shorter. */
void TDescriptorStream::MoveTail(long from, long to) {
  const long size = length() - from;
  for (long done = 0; done < size && from != to && !fFailed;) {
    const long piece = std::min(kPieceBytes, size - done);
    const long at = to > from ? size - done - piece : done; // a growing file is moved from its end
    TagLib::ByteVector data(static_cast<unsigned>(piece), '\0');
    if (ReadAt(from + at, &data)) WriteAt(to + at, data);
    done += piece;
  }
  if (to < from) truncate(to + size);
}
