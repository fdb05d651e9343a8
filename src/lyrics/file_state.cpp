#include "lyrics/file_state.h"

#include "platform/storage/file.h"

#include <sys/stat.h>

#include <algorithm>
#include <bit>
#include <cstring>

namespace {

constexpr uint64 kDigestStart = 14695981039346656037U;
constexpr uint64 kDigestPrime = 1099511628211U;
constexpr int64 kNsPerS = 1000000000;
constexpr int kRotation = 29; // carries the high bits, which a multiplication never moves down

/** Up to 8 bytes as a little-endian number. */
uint64 word_at(const char* bytes, size_t count) {
  uint64 word = 0;
  std::memcpy(&word, bytes, count);
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

} // namespace

uint64 digest_of(std::string_view bytes) {
  uint64 digest = (kDigestStart ^ bytes.size()) * kDigestPrime;
  for (; !bytes.empty(); bytes.remove_prefix(std::min(bytes.size(), sizeof(uint64)))) {
    const uint64 word = word_at(bytes.data(), std::min(bytes.size(), sizeof(uint64)));
    digest = std::rotl((digest ^ word) * kDigestPrime, kRotation);
  }
  return digest;
}

TFileState file_state(int descriptor, std::string_view bytes) {
  struct stat info {};
  fstat(descriptor, &info);
  return {.device = info.st_dev,
          .inode = info.st_ino,
          .size = static_cast<int64>(bytes.size()),
          .modifiedNs = info.st_mtim.tv_sec * kNsPerS + info.st_mtim.tv_nsec,
          .digest = digest_of(bytes)};
}

std::optional<TFileState> file_state(const std::string& path, int64 maxSize) {
  BFile file(path.c_str(), B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK || size > maxSize) return {};
  std::string bytes(static_cast<size_t>(size), '\0');
  size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t count = file.Read(bytes.data() + length, bytes.size() - length);
    if (count < 0) return {};
    if (count == 0) break; // truncated meanwhile
    length += static_cast<size_t>(count);
  }
  bytes.resize(length);
  return file_state(file.Descriptor(), bytes);
}
