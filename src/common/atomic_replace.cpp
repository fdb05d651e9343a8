#include "common/atomic_replace.h"

#include "common/file_replacement.h"
#include "common/safety_copy.h"
#include "common/stale_files.h"
#include "common/unique_file.h"
#include "platform/kernel/unique_fd.h"
#include "platform/storage/file.h"
#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <utility>
#include <vector>

namespace {

status_t replace_whole(TFileTarget target, std::string_view bytes, TFlush flush) {
  const std::string path = target.path;
  TFileReplacement replacement;
  status_t status = replacement.Write(std::move(target), bytes, flush != TFlush::kNothing);
  if (status == B_OK) status = replacement.Commit();
  if (status == B_OK && flush == TFlush::kFileAndFolder) flush_folder_of(path);
  return status;
}

/** Truncates last, so that a disk that takes nothing leaves the old bytes. */
status_t write_over(const std::string& path, std::string_view bytes) {
  const UniqueFd file(open(path.c_str(), O_WRONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
  if (!file) return status_of_errno(errno);
  const status_t status = write_all(file.Get(), bytes);
  if (status != B_OK) return status;
  if (ftruncate(file.Get(), static_cast<off_t>(bytes.size())) != 0) return status_of_errno(errno);
  return fsync(file.Get()) == 0 ? B_OK : status_of_errno(errno);
}

/** For a file with several hard links, which must all show the new content, and for folders in which no file can be
    created. */
status_t rewrite_in_place(const std::string& path, std::string_view bytes) {
  const std::string copy = make_safety_copy(path);
  if (copy.empty()) return B_IO_ERROR;
  const status_t status = write_over(path, bytes);
  if (status == B_OK || restore_safety_copy(copy, path)) unlink(copy.c_str());
  return status;
}

} // namespace

status_t atomic_replace(const std::string& path, std::string_view bytes, TFlush flush) {
  TFileTarget target;
  const status_t status = find_file_target(path, &target);
  if (status != B_OK) return status;
  TStaleFiles(folder_of(target.path)).RemoveThoseOf(target.path);
  if (target.old && target.old->st_nlink > 1) return rewrite_in_place(target.path, bytes);
  const status_t replaced = replace_whole(target, bytes, flush);
  return replaced == B_PERMISSION_DENIED && target.old ? rewrite_in_place(target.path, bytes) : replaced;
}

bool file_holds(const std::string& path, std::string_view bytes) {
  BFile file(path.c_str(), B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK) return false;
  if (static_cast<size_t>(size) != bytes.size()) return false;
  std::vector<char> chunk(size_t{1} << 16);
  while (!bytes.empty()) {
    const ssize_t count = file.Read(chunk.data(), chunk.size());
    if (count <= 0 || static_cast<size_t>(count) > bytes.size()) return false;
    const std::string_view read(chunk.data(), static_cast<size_t>(count));
    if (bytes.substr(0, read.size()) != read) return false;
    bytes.remove_prefix(read.size());
  }
  return true;
}
