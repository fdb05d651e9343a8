#include "player/app/known_songs.h"

#include "common/atomic_replace.h"
#include "player/list/m3u.h"
#include "player/model/read_file.h"
#include "player/model/watched_folders.h"

#include <filesystem>
#include <utility>

void TKnownSongs::Load(const std::string& path) {
  fPath = path;
  for (TSong& song : parse_m3u(read_file(path).value_or(""), "/")) fSongs.insert(std::move(song.path));
}

bool TKnownSongs::Save() {
  if (fPath.empty() || !std::exchange(fHasChanged, false)) return true;
  TSongs songs(fSongs.size());
  size_t i = 0;
  for (const std::string& path : fSongs) songs[i++].path = path;
  std::error_code error; // the file cannot be written then
  std::filesystem::create_directories(std::filesystem::path(fPath).parent_path(), error);
  return atomic_replace(fPath, m3u_text(songs, "")) == B_OK;
}

TSongs TKnownSongs::NewOf(TSongs songs) {
  std::erase_if(songs, [this](const TSong& song) { return !fSongs.insert(song.path).second; });
  fHasChanged |= !songs.empty();
  return songs;
}

void TKnownSongs::Forget(const std::vector<std::string>& paths) {
  for (const std::string& path : paths) fHasChanged |= fSongs.erase(path) > 0;
}

void TKnownSongs::ForgetFolder(const std::string& folder) {
  fHasChanged |= std::erase_if(fSongs, [&](const std::string& path) { return is_below(path, folder); }) > 0;
}

void TKnownSongs::KeepOnly(const std::string& folder, const TSongs& songs) {
  std::unordered_set<std::string> kept;
  for (const TSong& song : songs) kept.insert(song.path);
  const auto isGone = [&](const std::string& path) { return is_below(path, folder) && !kept.contains(path); };
  fHasChanged |= std::erase_if(fSongs, isGone) > 0;
}
