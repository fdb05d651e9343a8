#include "common/unique_file.h"

#include "common/file_replacement.h"
#include "platform/kernel/unique_fd.h"

#include <fcntl.h>
#include <stdio.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

namespace {

struct TCreated {
  UniqueFd fd;
  std::string path;
};

TCreated create_unique(const TNameOf& nameOf) {
  for (int number = 1; number <= kMostUniqueNames; ++number) {
    const std::string path = nameOf(number);
    UniqueFd fd(open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (fd) return {std::move(fd), path};
    if (errno != EEXIST) break;
  }
  return {};
}

/** Fills the file by `write`, which returns success; removes it on failure. */
std::string filled(const TCreated& file, const std::function<bool(int fd)>& write) {
  if (!file.fd) return {};
  if (write(file.fd.Get()) && fsync(file.fd.Get()) == 0) {
    flush_folder_of(file.path);
    return file.path;
  }
  unlink(file.path.c_str());
  return {};
}

bool copy_all(int from, int to) {
  std::vector<char> chunk(size_t{1} << 16);
  for (;;) {
    const ssize_t count = read(from, chunk.data(), chunk.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count == 0;
    if (write_all(to, {chunk.data(), static_cast<size_t>(count)}) != B_OK) return false;
  }
}

} // namespace

TNameOf numbered_names(const std::string& path) {
  return [path](int number) { return number == 1 ? path : path + "." + std::to_string(number); };
}

std::string write_unique_file(const TNameOf& nameOf, std::string_view bytes) {
  return filled(create_unique(nameOf), [bytes](int fd) { return write_all(fd, bytes) == B_OK; });
}

std::string copy_to_unique_file(const std::string& from, const TNameOf& nameOf) {
  const UniqueFd source(open(from.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
  struct stat info {};
  if (!source || fstat(source.Get(), &info) != 0 || !S_ISREG(info.st_mode)) return {};
  return filled(create_unique(nameOf), [&source](int fd) { return copy_all(source.Get(), fd); });
}

bool rename_to_unique(const std::string& from, const TNameOf& nameOf) {
  for (int number = 1; number <= kMostUniqueNames; ++number) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, nameOf(number).c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno != EEXIST) return false;
  }
  return false;
}

void flush_folder_of(const std::string& path) {
  const UniqueFd folder(open(folder_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) fsync(folder.Get());
}
