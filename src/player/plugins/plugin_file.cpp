#include "player/plugins/plugin_file.h"

#include "platform/kernel/unique_fd.h"
#include "player/plugins/elf_image.h"
#include "player/texts/player_texts.h"

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/xattr.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

namespace {

/** Enough for any relevant entry of the user and group tables; a group with more members is not private. */
constexpr size_t kAccountBytes = 4096;

std::string user_name() {
  std::vector<char> buffer(kAccountBytes);
  passwd entry{};
  passwd* found = nullptr;
  getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found);
  return found ? found->pw_name : "";
}

/** Many systems give each user a private group of the same name, and make files group-writable by default. */
bool is_private_group(gid_t id) {
  std::vector<char> buffer(kAccountBytes);
  group entry{};
  group* found = nullptr;
  getgrgid_r(id, &entry, buffer.data(), buffer.size(), &found);
  const std::string user = user_name();
  if (found == nullptr || user.empty() || user != found->gr_name) return false;
  for (char** member = found->gr_mem; *member; ++member) {
    if (user != *member) return false;
  }
  return true;
}

bool has_access_list(const std::string& path) {
  return getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) > 0;
}

bool can_others_write(const std::string& path, const struct stat& info) {
  if (info.st_uid != geteuid() && info.st_uid != 0) return true;
  if (info.st_mode & S_IWOTH) return true;
  return (info.st_mode & S_IWGRP) && (has_access_list(path) || !is_private_group(info.st_gid));
}

std::string folder_error(const std::string& folder) {
  struct stat info {};
  if (stat(folder.c_str(), &info) != 0) return player_text("Player_Plugin_No_Folder");
  return can_others_write(folder, info) ? player_text("Player_Plugin_Open_Folder") : "";
}

std::string node_error(const std::string& path, const struct stat& info) {
  if (!S_ISREG(info.st_mode)) return player_text("Player_Plugin_Irregular");
  return can_others_write(path, info) ? player_text("Player_Plugin_Open_File") : "";
}

std::string real_path(const std::string& path) {
  std::error_code error;
  return std::filesystem::canonical(path, error).string();
}

bool have_same_bytes(const std::string& path, const std::string& otherPath) {
  using TBytes = std::istreambuf_iterator<char>;
  std::ifstream file(path, std::ios::binary);
  std::ifstream other(otherPath, std::ios::binary);
  return std::equal(TBytes(file), TBytes(), TBytes(other), TBytes());
}

} // namespace

bool TPluginFile::IsSameAs(const TPluginFile& other) const {
  if (device == other.device && node == other.node) return true;
  if (!buildId.empty() || !other.buildId.empty()) return buildId == other.buildId;
  return have_same_bytes(path, other.path);
}

std::string check_plugin_file(const std::string& path, TPluginFile* file) {
  const std::string real = real_path(path);
  if (real.empty()) return player_text("Player_Plugin_Broken_Link");
  std::string error = folder_error(std::filesystem::path(real).parent_path().string());
  struct stat info {};
  // Checked before open(), which has side effects on some devices.
  if (error.empty() && stat(real.c_str(), &info) == 0) error = node_error(real, info);
  if (!error.empty()) return error;
  const UniqueFd opened(open(real.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
  if (!opened || fstat(opened.Get(), &info) != 0) return player_text("Player_Plugin_Unreadable");
  error = node_error(real, info);
  if (!error.empty()) return error;
  const TElfImage image = read_elf_image(opened.Get(), static_cast<uint64>(info.st_size));
  *file = {real, info.st_dev, info.st_ino, image.buildId};
  return image.error;
}
