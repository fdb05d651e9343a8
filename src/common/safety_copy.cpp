#include "common/safety_copy.h"

#include "common/file_replacement.h"
#include "common/koreva.h"
#include "common/unique_file.h"
#include "platform/storage/entry.h"
#include "platform/storage/path.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>

namespace {

TNameOf safety_names(const std::string& path) {
  return numbered_names(name_beside(path, ".before-save"));
}

/** Size of a regular file owned by this user; -1 for anything else. */
off_t own_file_size(const std::string& path) {
  struct stat info {};
  const bool isOwn =
      lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == geteuid() && info.st_nlink == 1;
  return isOwn ? info.st_size : -1;
}

/** Names in that folder that end with the original extension. */
TNameOf recovery_names(const std::string& folder, const std::string& path) {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char moment[32];
  std::strftime(moment, sizeof moment, "%Y-%m-%d_%H%M%S", &local);
  const std::string prefix = folder + "/Recovered_" + moment + "_";
  const std::string leaf = name_beside(BPath(path.c_str()).Leaf(), "");
  return [=](int number) { return prefix + (number == 1 ? "" : std::to_string(number) + "_") + leaf; };
}

/** Empty if there is none. */
std::string recovery_folder() {
  BEntry entry;
  BPath path;
  const bool isThere =
      koreva::get_entry("Recovered", &entry, koreva::kSettingsDir, "VesmoE") && entry.GetPath(&path) == B_OK;
  return isThere ? folder_of(path.Path()) : std::string();
}

/** FNV-1a. */
uint64 hash_of(std::string_view text) {
  uint64 hash = 0xcbf29ce484222325U;
  for (const char c : text) hash = (hash ^ static_cast<uint8>(c)) * 0x100000001b3U;
  return hash;
}

/** In the recovery folder, of a file in whose folder none can be created; its path, as a hash, finds it again. */
TNameOf distant_safety_names(const std::string& folder, const std::string& path) {
  char hash[17];
  std::snprintf(hash, sizeof hash, "%016llx", static_cast<unsigned long long>(hash_of(path)));
  const std::string prefix = folder + "/Recovered_before-save-" + hash + "_";
  const std::string leaf = name_beside(BPath(path.c_str()).Leaf(), "");
  return [=](int number) { return prefix + (number == 1 ? "" : std::to_string(number) + "_") + leaf; };
}

std::string keep(const std::string& path, const std::function<std::string(const TNameOf&)>& write) {
  const std::string folder = recovery_folder();
  const std::string kept = folder.empty() ? folder : write(recovery_names(folder, path));
  if (!kept.empty()) return kept;
  std::error_code error; // TMPDIR may name no folder
  const std::filesystem::path temporary = std::filesystem::temp_directory_path(error);
  return write(recovery_names(error ? "/tmp" : temporary.string(), path));
}

} // namespace

std::string make_safety_copy(const std::string& path) {
  std::string copy = copy_to_unique_file(path, safety_names(path));
  const std::string folder = copy.empty() ? recovery_folder() : std::string();
  if (!folder.empty()) copy = copy_to_unique_file(path, distant_safety_names(folder, path));
  return copy.empty() ? keep_file_for_recovery(path) : copy;
}

bool restore_safety_copy(const std::string& copy, const std::string& path) {
  std::error_code error;
  return std::filesystem::copy_file(copy, path, std::filesystem::copy_options::overwrite_existing, error);
}

std::string longer_safety_copy(const std::string& path) {
  TFileTarget target;
  if (find_file_target(path, &target) != B_OK || !target.old) return {};
  std::string longest;
  off_t most = target.old->st_size;
  for (const TNameOf& nameOf : {safety_names(target.path), distant_safety_names(recovery_folder(), target.path)}) {
    for (int number = 1; number <= kMostUniqueNames; ++number) {
      const std::string copy = nameOf(number);
      const off_t size = own_file_size(copy);
      if (size <= most) continue;
      longest = copy;
      most = size;
    }
  }
  return longest;
}

std::string keep_for_recovery(const std::string& path, std::string_view bytes) {
  return keep(path, [bytes](const TNameOf& nameOf) { return write_unique_file(nameOf, bytes); });
}

std::string keep_file_for_recovery(const std::string& path) {
  TFileTarget target;
  static_cast<void>(find_file_target(path, &target)); // copies read-only files, too
  return keep(path, [&target](const TNameOf& nameOf) { return copy_to_unique_file(target.path, nameOf); });
}
