#include "lyrics/replace_file.h"

#include "common/koreva.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/path.h"
#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <utility>
#include <vector>

namespace {

/** A file descriptor that closes itself. */
class Descriptor {
public:
  explicit Descriptor(int number) : fNumber(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (fNumber >= 0) close(fNumber);
  }
  bool IsOpen() const { return fNumber >= 0; }
  int Number() const { return fNumber; }
  /** The last chance to learn that something was not written. */
  status_t Close() { return close(std::exchange(fNumber, -1)) == 0 ? B_OK : status_of_errno(errno); }

private:
  int fNumber;
};

status_t write_all(Descriptor* file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(file->Number(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return count < 0 ? status_of_errno(errno) : B_IO_ERROR;
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  if (fsync(file->Number()) != 0) return status_of_errno(errno);
  return file->Close();
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

/** The new file looks like the old one to everybody else. What is not allowed is left: the bytes come first. */
void take_over_looks(const std::string& old, const struct stat& info, int file) {
  if (fchown(file, info.st_uid, info.st_gid) != 0 && fchown(file, static_cast<uid_t>(-1), info.st_gid) != 0) {
    // Another owner's file, replaced by this user: it becomes this user's.
  }
  fchmod(file, info.st_mode & 07777);
  copy_attributes(old, file);
}

/** Where a chain of symbolic links leads, also when nothing is there yet. */
std::string real_path(const std::string& path) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::weakly_canonical(path, error);
  return error ? path : real.string();
}

void flush_folder(const std::string& path) {
  const Descriptor folder(open(std::filesystem::path(path).parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder.IsOpen()) fsync(folder.Number());
}

status_t replace_whole(const std::string& path, const struct stat* old, std::string_view bytes) {
  const std::string written = path + ".saving-" + std::to_string(getpid());
  unlink(written.c_str()); // left by a process of this number that was killed as it saved
  Descriptor file(open(written.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666));
  if (!file.IsOpen()) return status_of_errno(errno);
  if (old) take_over_looks(path, *old, file.Number());
  status_t status = write_all(&file, bytes);
  if (status == B_OK && std::rename(written.c_str(), path.c_str()) != 0) status = status_of_errno(errno);
  if (status != B_OK) unlink(written.c_str());
  if (status == B_OK) flush_folder(path);
  return status;
}

/** For a file that goes by several names: each must see the new text, so the file itself is written. */
status_t rewrite_in_place(const std::string& path, std::string_view bytes) {
  std::error_code error;
  const std::string aside = path + ".before-save";
  if (!std::filesystem::copy_file(path, aside, std::filesystem::copy_options::overwrite_existing, error)) {
    return B_IO_ERROR;
  }
  Descriptor file(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NONBLOCK));
  const status_t status = file.IsOpen() ? write_all(&file, bytes) : status_of_errno(errno);
  if (status == B_OK) unlink(aside.c_str());
  return status;
}

} // namespace

status_t replace_file(const std::string& path, std::string_view bytes) {
  const std::string target = real_path(path);
  struct stat info {};
  if (stat(target.c_str(), &info) != 0) {
    return errno == ENOENT ? replace_whole(target, nullptr, bytes) : status_of_errno(errno);
  }
  if (!S_ISREG(info.st_mode)) return S_ISDIR(info.st_mode) ? B_IS_A_DIRECTORY : B_BAD_VALUE;
  // A file that may not be written is not to be replaced by a trick of its folder's permissions.
  if (access(target.c_str(), W_OK) != 0) return status_of_errno(errno);
  return info.st_nlink > 1 ? rewrite_in_place(target, bytes) : replace_whole(target, &info, bytes);
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

std::string keep_for_recovery(const std::string& path, std::string_view bytes) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char moment[32];
  std::strftime(moment, sizeof moment, "%Y-%m-%d_%H%M%S", &local);
  const std::string name = "Recovered_" + std::string(moment) + "_" + BPath(path.c_str()).Leaf();
  BEntry entry;
  BPath kept;
  if (koreva::get_entry(name.c_str(), &entry, koreva::kSettingsDir, "VesmoE") && entry.GetPath(&kept) == B_OK &&
      replace_file(kept.Path(), bytes) == B_OK) {
    return kept.Path();
  }
  const std::string fallback = std::filesystem::temp_directory_path().string() + "/" + name;
  return replace_file(fallback, bytes) == B_OK ? fallback : std::string();
}
