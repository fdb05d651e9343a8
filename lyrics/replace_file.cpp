#include "lyrics/replace_file.h"

#include "common/koreva.h"
#include "lyrics/file_replacement.h"
#include "platform/kernel/unique_fd.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/path.h"
#include "platform/storage/status_of.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <utility>
#include <vector>

namespace {

void flush_folder(const std::string& path) {
  const std::string parent = std::filesystem::path(path).parent_path().string();
  const UniqueFd folder(open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) fsync(folder.Get());
}

status_t replace_whole(TFileTarget target, std::string_view bytes) {
  const std::string path = target.path;
  TFileReplacement replacement;
  status_t status = replacement.Write(std::move(target), bytes, true);
  if (status == B_OK) status = replacement.Commit();
  if (status == B_OK) flush_folder(path);
  return status;
}

bool copy_over(const std::string& from, const std::string& to) {
  std::error_code error;
  return std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
}

/** Beside the file or, where its folder takes none, among the recovered; where, or an empty text. */
std::string put_aside(const std::string& path) {
  const std::string beside = name_beside(path, ".before-save");
  return copy_over(path, beside) ? beside : keep_file_for_recovery(path);
}

status_t write_over(const std::string& path, std::string_view bytes) {
  const UniqueFd file(open(path.c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC | O_NONBLOCK));
  if (!file) return status_of_errno(errno);
  const status_t status = write_all(file.Get(), bytes);
  if (status != B_OK) return status;
  return fsync(file.Get()) == 0 ? B_OK : status_of_errno(errno);
}

/** For a file that goes by several names, each of which must see the new text, and for one whose folder takes no other
    file: the file itself is written. */
status_t rewrite_in_place(const std::string& path, std::string_view bytes) {
  const std::string aside = put_aside(path);
  if (aside.empty()) return B_IO_ERROR;
  const status_t status = write_over(path, bytes);
  if (status == B_OK || copy_over(aside, path)) unlink(aside.c_str());
  return status;
}

} // namespace

status_t replace_file(const std::string& path, std::string_view bytes) {
  TFileTarget target;
  const status_t status = find_file_target(path, &target);
  if (status != B_OK) return status;
  if (target.old && target.old->st_nlink > 1) return rewrite_in_place(target.path, bytes);
  const status_t replaced = replace_whole(target, bytes);
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

std::string keep_for_recovery(const std::string& path, std::string_view bytes) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char moment[32];
  std::strftime(moment, sizeof moment, "%Y-%m-%d_%H%M%S", &local);
  const std::string name = "Recovered_" + std::string(moment) + "_" + name_beside(BPath(path.c_str()).Leaf(), "");
  BEntry entry;
  BPath kept;
  if (koreva::get_entry(name.c_str(), &entry, koreva::kSettingsDir, "VesmoE") && entry.GetPath(&kept) == B_OK &&
      replace_file(kept.Path(), bytes) == B_OK) {
    return kept.Path();
  }
  const std::string fallback = std::filesystem::temp_directory_path().string() + "/" + name;
  return replace_file(fallback, bytes) == B_OK ? fallback : std::string();
}

std::string keep_file_for_recovery(const std::string& path) {
  BFile file(path.c_str(), B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK) return {};
  std::string bytes(static_cast<size_t>(size), '\0');
  if (file.Read(bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) return {};
  return keep_for_recovery(path, bytes);
}
