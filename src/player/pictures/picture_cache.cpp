#include "player/pictures/picture_cache.h"

#include "common/atomic_replace.h"
#include "platform/support/log.h"

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

std::string cache_folder() {
  const char* const cache = std::getenv("XDG_CACHE_HOME");
  if (cache && cache[0] == '/') return std::string(cache) + "/KOREVA/Sonivo";
  const char* const home = std::getenv("HOME");
  return home ? std::string(home) + "/.cache/KOREVA/Sonivo" : std::string();
}

/** FNV-1a: stable across runs. */
uint64_t hash_of(const std::string& text) {
  uint64_t hash = 14695981039346656037U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return hash;
}

struct TKept {
  fs::path path;
  uintmax_t size;
  fs::file_time_type used;
};

std::vector<TKept> kept_in(const fs::path& folder) {
  std::vector<TKept> kept;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    std::error_code gone;
    const TKept one{entry.path(), entry.file_size(gone), entry.last_write_time(gone)};
    if (!gone) kept.push_back(one);
  }
  return kept;
}

void trim(const fs::path& folder, uintmax_t limit) {
  std::vector<TKept> kept = kept_in(folder);
  std::sort(kept.begin(), kept.end(), [](const TKept& a, const TKept& b) { return a.used > b.used; });
  uintmax_t total = 0;
  for (const TKept& one : kept) {
    total += one.size;
    std::error_code error;
    if (total > limit) fs::remove(one.path, error);
  }
}

} // namespace

std::string cached_picture_path(const std::string& song) {
  struct stat file {};
  const std::string folder = cache_folder();
  if (folder.empty() || stat(song.c_str(), &file) != 0) return {};
  const std::string state = song + '\n' + std::to_string(file.st_size) + '\n' + std::to_string(file.st_mtim.tv_sec) +
                            '\n' + std::to_string(file.st_mtim.tv_nsec);
  char name[24];
  std::snprintf(name, sizeof name, "%016lx.snpk", static_cast<unsigned long>(hash_of(state)));
  return folder + "/" + name;
}

std::string cover_file_beside(const std::string& keptPicture) {
  return fs::path(keptPicture).replace_extension(".jpg").string();
}

void keep_picture(const std::string& path, const std::string& bytes, uintmax_t limit) {
  std::error_code error;
  const fs::path folder = fs::path(path).parent_path();
  fs::create_directories(folder, error);
  if (atomic_replace(path, bytes, TFlush::kNothing) != B_OK) log_error("pictures", path + " could not be written");
  trim(folder, limit);
}
