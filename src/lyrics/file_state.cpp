#include "lyrics/file_state.h"

#include "platform/storage/file.h"

#include <sys/stat.h>

#include <cerrno>
#include <vector>

namespace {

constexpr int64 kNsPerS = 1000000000;
constexpr size_t kPartSize = size_t{1} << 18;

TFileState state_of(const struct stat& info, int64 size, uint64 digest) {
  return {.device = info.st_dev,
          .inode = info.st_ino,
          .size = size,
          .modifiedNs = info.st_mtim.tv_sec * kNsPerS + info.st_mtim.tv_nsec,
          .digest = digest};
}

TFileKind kind_of_error(const std::string& path, int error) {
  if (error != ENOENT && error != ENOTDIR) return TFileKind::kUnreadable;
  struct stat folder {};
  const std::string above = path.substr(0, path.rfind('/') + 1);
  const bool hasFolder = stat(above.c_str(), &folder) == 0 && S_ISDIR(folder.st_mode);
  return hasFolder ? TFileKind::kMissing : TFileKind::kFolderMissing;
}

/** Fills the part unless the file ends before. -1 on failure. */
ssize_t read_part(BFile* file, std::vector<char>* part) {
  size_t length = 0;
  while (length < part->size()) {
    const ssize_t count = file->Read(part->data() + length, part->size() - length);
    if (count < 0) return -1;
    if (count == 0) break;
    length += static_cast<size_t>(count);
  }
  return static_cast<ssize_t>(length);
}

/** The digest of as many bytes as the file had when it was opened; nothing when it cannot be read. A file that is
    written meanwhile gets the digest of neither version. */
std::optional<uint64> digest_of_file(BFile* file, int64 size, std::atomic<int64>* progress) {
  std::vector<char> part(kPartSize);
  TDigest digest(static_cast<uint64>(size));
  for (;;) {
    const ssize_t length = read_part(file, &part);
    if (length < 0) return {};
    digest.Add({part.data(), static_cast<size_t>(length)});
    if (progress) *progress += length;
    if (static_cast<size_t>(length) < part.size()) return digest.Value();
  }
}

} // namespace

TFileState file_state(int descriptor, std::string_view bytes) {
  struct stat info {};
  fstat(descriptor, &info);
  return state_of(info, static_cast<int64>(bytes.size()), digest_of(bytes));
}

TFileLook look_at_file(const std::string& path, int64 maxSize, std::atomic<int64>* progress) {
  struct stat info {};
  if (stat(path.c_str(), &info) != 0) return {kind_of_error(path, errno), {}};
  if (!S_ISREG(info.st_mode)) return {TFileKind::kNotRegular, {}};
  if (progress) ++*progress;
  BFile file(path.c_str(), B_READ_ONLY); // does not block, should a pipe have taken the place meanwhile
  if (file.InitCheck() != B_OK || !file.IsRegular() || fstat(file.Descriptor(), &info) != 0)
    return {TFileKind::kUnreadable, {}};
  if (info.st_size > maxSize) return {TFileKind::kTooLarge, {}};
  const std::optional<uint64> digest = digest_of_file(&file, info.st_size, progress);
  if (!digest) return {TFileKind::kUnreadable, {}};
  return {TFileKind::kRegular, state_of(info, info.st_size, *digest)};
}
