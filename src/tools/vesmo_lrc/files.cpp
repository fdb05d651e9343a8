#include "tools/vesmo_lrc/files.h"

#include "common/atomic_replace.h"
#include "platform/kernel/unique_fd.h"
#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr size_t kMaxBytes = size_t{1} << 30;

/** True if both describe the same file, not written in between. */
bool is_unchanged(const struct stat& a, const struct stat& b) {
  return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
         a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

/** True if the file has not been written since. */
bool is_as_it_was(const TFileTarget& target) {
  struct stat now {};
  const bool isThere = lstat(target.path.c_str(), &now) == 0;
  return isThere == target.old.has_value() && (!isThere || is_unchanged(now, *target.old));
}

/** Reads to the end. For a regular file a short read is the end; a pipe is read until it is closed. */
status_t read_all(int file, bool isPipe, size_t expected, std::string* bytes) {
  bytes->resize(expected + 1);
  size_t length = 0;
  for (;;) {
    if (length == bytes->size()) bytes->resize(std::max<size_t>(length * 2, 65536));
    const size_t room = bytes->size() - length;
    const ssize_t count = read(file, bytes->data() + length, room);
    if (count < 0) return status_of_errno(errno);
    length += static_cast<size_t>(count);
    if (length > kMaxBytes) return B_FILE_TOO_LARGE;
    if (count == 0 || (!isPipe && static_cast<size_t>(count) < room)) break;
  }
  bytes->resize(length);
  return B_OK;
}

} // namespace

status_t read_input(const std::string& path, std::string* bytes, struct stat* info) {
  if (path == "-") return read_all(STDIN_FILENO, true, 65535, bytes);
  const UniqueFd file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file || fstat(file.Get(), info) != 0) return status_of_errno(errno);
  if (!S_ISREG(info->st_mode)) return S_ISDIR(info->st_mode) ? B_IS_A_DIRECTORY : B_BAD_VALUE;
  if (static_cast<size_t>(info->st_size) > kMaxBytes) return B_FILE_TOO_LARGE;
  return read_all(file.Get(), false, static_cast<size_t>(info->st_size), bytes);
}

std::string error_text(status_t status) {
  switch (status) {
  case B_ENTRY_NOT_FOUND:
    return "no such file";
  case B_PERMISSION_DENIED:
    return "permission denied";
  case B_FILE_EXISTS:
    return "the file exists; --force overwrites it";
  case B_IS_A_DIRECTORY:
    return "this is a folder";
  case B_NOT_A_DIRECTORY:
    return "part of the path is not a folder";
  case B_BAD_VALUE:
    return "not a regular file";
  case B_DEVICE_FULL:
    return "the disk is full";
  case B_FILE_TOO_LARGE:
    return "larger than 1 GiB";
  case B_NO_MEMORY:
    return "not enough memory";
  case B_INTERRUPTED:
    return "interrupted";
  case B_MISMATCHED_VALUES:
    return "another program changed the file meanwhile; it was left unchanged";
  default:
    return "the file could not be read or written";
  }
}

status_t TReplacementBatch::Begin(size_t id, TFileTarget target, std::string_view bytes) {
  struct stat folder {};
  const std::string folderPath = folder_of(target.path);
  if (target.old) {
    folder = *target.old;
  } else if (stat(folderPath.c_str(), &folder) != 0) {
    return status_of_errno(errno);
  }
  fStale.try_emplace(folderPath, folderPath).first->second.RemoveThoseOf(target.path);
  TPending pending{id, {}};
  const status_t status = pending.replacement.Write(std::move(target), bytes, false);
  if (status != B_OK) return status;
  fFolders.emplace(folder.st_dev, folderPath);
  fPending.push_back(std::move(pending));
  return B_OK;
}

status_t TReplacementBatch::Add(size_t id, const std::string& path, const struct stat& asRead, std::string_view bytes) {
  TFileTarget target;
  const status_t status = find_file_target(path, &target);
  if (status != B_OK) return status;
  if (!target.old || !is_unchanged(*target.old, asRead)) return B_MISMATCHED_VALUES;
  // Its other hard links must get the new content as well, so it is replaced separately.
  return target.old->st_nlink == 1 ? Begin(id, std::move(target), bytes) : atomic_replace(path, bytes);
}

status_t TReplacementBatch::AddCopy(size_t id, const std::string& path, std::string_view bytes, bool overwrites) {
  std::error_code error;
  fs::create_directories(folder_of(path), error);
  TFileTarget target;
  const status_t status = find_file_target(path, &target);
  if (status != B_OK) return status;
  if (target.old && !overwrites) return B_FILE_EXISTS;
  return Begin(id, std::move(target), bytes);
}

status_t TReplacementBatch::FlushDisks() {
  for (const auto& [device, path] : fFolders) {
    const UniqueFd folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!folder || syncfs(folder.Get()) != 0) return status_of_errno(errno);
  }
  return B_OK;
}

std::vector<size_t> TReplacementBatch::Waiting() const {
  std::vector<size_t> ids;
  for (const TPending& pending : fPending) ids.push_back(pending.id);
  return ids;
}

void TReplacementBatch::Commit(const std::function<void(size_t id, status_t)>& told) {
  const status_t flushed = FlushDisks();
  for (TPending& pending : fPending) {
    status_t status = flushed;
    if (status == B_OK && !is_as_it_was(pending.replacement.Target())) status = B_MISMATCHED_VALUES;
    if (status == B_OK) status = pending.replacement.Commit();
    told(pending.id, status);
  }
  fPending.clear();
  fFolders.clear();
}
