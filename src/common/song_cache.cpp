#include "common/song_cache.h"

#include "common/atomic_replace.h"
#include "platform/support/log.h"

#include <fcntl.h>
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

std::string cached_song_file(const std::string& song, const std::string& subfolder, const std::string& extension) {
  struct stat file {};
  const std::string folder = cache_folder();
  if (folder.empty() || stat(song.c_str(), &file) != 0) return {};
  const std::string state = song + '\n' + std::to_string(file.st_size) + '\n' + std::to_string(file.st_mtim.tv_sec) +
                            '\n' + std::to_string(file.st_mtim.tv_nsec);
  char name[24];
  std::snprintf(name, sizeof name, "%016lx.", static_cast<unsigned long>(hash_of(state)));
  return (fs::path(folder) / subfolder / (name + extension)).string();
}

void keep_cached(const std::string& path, std::string_view bytes, uintmax_t limit) {
  std::error_code error;
  const fs::path folder = fs::path(path).parent_path();
  fs::create_directories(folder, error);
  if (atomic_replace(path, bytes, TFlush::kNothing) != B_OK) log_error("cache", path + " could not be written");
  trim(folder, limit);
}

std::optional<std::string> read_cached(const std::string& path, uintmax_t most) {
  std::error_code error;
  if (path.empty() || !fs::is_regular_file(path, error) || fs::file_size(path, error) > most || error) return {};
  std::ifstream file(path, std::ios::binary | std::ios::ate);
  const std::streamoff size = file.tellg();
  if (!file || size < 0 || static_cast<uintmax_t>(size) > most) return {};
  std::string bytes(static_cast<size_t>(size), '\0');
  file.seekg(0);
  if (!file.read(bytes.data(), size)) return {};
  utimensat(AT_FDCWD, path.c_str(), nullptr, 0); // recently used, for the eviction
  return bytes;
}
