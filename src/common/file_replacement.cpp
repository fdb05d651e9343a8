#include "common/file_replacement.h"

#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>
#include <vector>

namespace {

/** The end of a chain of symbolic links, which need not exist. */
std::string end_of_links(const std::string& path) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::weakly_canonical(path, error);
  return error ? path : real.string();
}

void copy_attributes(const std::string& from, int to) {
  const ssize_t listSize = listxattr(from.c_str(), nullptr, 0);
  if (listSize <= 0) return;
  std::vector<char> names(static_cast<size_t>(listSize));
  const ssize_t length = listxattr(from.c_str(), names.data(), names.size());
  for (ssize_t at = 0; at < length;
       at += static_cast<ssize_t>(std::string_view(&names[static_cast<size_t>(at)]).size()) + 1) {
    const char* const name = &names[static_cast<size_t>(at)];
    const ssize_t size = getxattr(from.c_str(), name, nullptr, 0);
    if (size < 0) continue;
    std::vector<char> value(static_cast<size_t>(size) + 1);
    if (getxattr(from.c_str(), name, value.data(), static_cast<size_t>(size)) == size) {
      fsetxattr(to, name, value.data(), static_cast<size_t>(size), 0);
    }
  }
}

/** Best effort: the content matters more than metadata that this user may not set. */
void copy_metadata(const TFileTarget& target, int file) {
  struct stat made {};
  fstat(file, &made);
  const struct stat& old = *target.old;
  const bool isOwn = made.st_uid == old.st_uid && made.st_gid == old.st_gid;
  if (!isOwn && fchown(file, old.st_uid, old.st_gid) != 0 && fchown(file, static_cast<uid_t>(-1), old.st_gid) != 0) {
    // Without the right to set the owner, the file becomes this user's.
  }
  if (!isOwn || made.st_mode != old.st_mode) fchmod(file, old.st_mode & 07777);
  copy_attributes(target.path, file);
}

/** Creates a temporary file under an unused name; private until it gets the target's permissions. */
int create_beside(const TFileTarget& target, std::string* path) {
  constexpr int kMostTries = 100;
  static std::atomic<int> count{0}; // truncated long names may be equal
  const std::string prefix = name_beside(target.path, ".saving-" + std::to_string(getpid()) + "-");
  int file = -1;
  for (int i = 0; i < kMostTries; ++i) {
    *path = prefix + std::to_string(++count);
    file = open(path->c_str(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, target.old ? 0600 : 0666);
    if (file >= 0 || errno != EEXIST) break; // EEXIST: left by a killed process with the same id
  }
  return file;
}

} // namespace

status_t find_file_target(const std::string& path, TFileTarget* target) {
  *target = {path, {}};
  struct stat info {};
  int found = lstat(path.c_str(), &info);
  if (found == 0 && S_ISLNK(info.st_mode)) {
    target->path = end_of_links(path);
    found = stat(target->path.c_str(), &info);
  }
  if (found != 0) return errno == ENOENT ? B_OK : status_of_errno(errno);
  if (!S_ISREG(info.st_mode)) return S_ISDIR(info.st_mode) ? B_IS_A_DIRECTORY : B_BAD_VALUE;
  // rename() only needs a writable folder; respect a read-only file all the same.
  if (access(target->path.c_str(), W_OK) != 0) return status_of_errno(errno);
  target->old = info;
  return B_OK;
}

status_t write_all(int file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(file, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count < 0 ? status_of_errno(errno) : B_IO_ERROR;
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return B_OK;
}

std::string folder_of(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  return folder.empty() ? "." : folder;
}

std::string name_beside(const std::string& path, const std::string& suffix) {
  constexpr size_t kMostOfName = 180; // file names are limited to 255 bytes
  const size_t leaf = path.rfind('/') + 1;
  size_t begin = path.size() - std::min(path.size() - leaf, kMostOfName);
  while (begin > leaf && begin < path.size() && (static_cast<unsigned char>(path[begin]) & 0xC0) == 0x80) ++begin;
  return path.substr(0, leaf) + path.substr(begin) + suffix;
}

TFileReplacement::TFileReplacement(TFileReplacement&& other) noexcept
    : fTarget(std::move(other.fTarget)), fWritten(std::exchange(other.fWritten, {})) {}

TFileReplacement& TFileReplacement::operator=(TFileReplacement&& other) noexcept {
  std::swap(fTarget, other.fTarget);
  std::swap(fWritten, other.fWritten);
  return *this;
}

TFileReplacement::~TFileReplacement() {
  if (!fWritten.empty()) unlink(fWritten.c_str());
}

status_t TFileReplacement::Write(TFileTarget target, std::string_view bytes, bool flush) {
  return WriteBy(
      std::move(target), [bytes](int file) { return write_all(file, bytes); }, flush);
}

status_t TFileReplacement::WriteBy(TFileTarget target, const std::function<status_t(int file)>& fill, bool flush) {
  fTarget = std::move(target);
  std::string path;
  const int file = create_beside(fTarget, &path);
  if (file < 0) return status_of_errno(errno);
  fWritten = std::move(path);
  if (fTarget.old) copy_metadata(fTarget, file);
  status_t status = fill(file);
  if (status == B_OK && flush && fsync(file) != 0) status = status_of_errno(errno);
  // close() may report an error of a delayed write.
  if (close(file) != 0 && status == B_OK) status = status_of_errno(errno);
  return status;
}

status_t TFileReplacement::Commit() {
  if (std::rename(fWritten.c_str(), fTarget.path.c_str()) != 0) return status_of_errno(errno);
  fWritten.clear();
  return B_OK;
}
