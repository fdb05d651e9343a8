#include "player/app/kept_list.h"

#include "common/atomic_replace.h"
#include "platform/storage/find_directory.h"
#include "player/list/m3u.h"
#include "player/model/read_file.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

namespace {

/** A line of its own, which other players skip as a comment. */
constexpr const char* kPlace = "\n#SONIVO:current=%d,position=%d,volume=%d";

} // namespace

TKeptList load_kept_list(const std::string& path) {
  TKeptList list;
  const std::string text = read_file(path).value_or("");
  list.songs = parse_m3u(text, "/");
  const size_t line = text.find("\n#SONIVO:");
  if (line == std::string::npos) return list;
  std::sscanf(text.c_str() + line, kPlace, &list.current, &list.positionMs, &list.volumePercent);
  list.current = std::clamp(list.current, int32{-1}, static_cast<int32>(list.songs.size()) - 1);
  list.positionMs = std::max(list.positionMs, int32{0});
  list.volumePercent = std::clamp(list.volumePercent, int32{0}, int32{100});
  return list;
}

bool save_kept_list(const TKeptList& list, const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(std::filesystem::path(path).parent_path(), error);
  char place[80];
  std::snprintf(place, sizeof place, kPlace, list.current, list.positionMs, list.volumePercent);
  std::string text = m3u_text(list.songs, ""); // absolute paths: the list is not stored with the songs
  text.insert(text.find('\n'), place);
  return atomic_replace(path, text) == B_OK;
}

std::string kept_list_path() {
  BPath settings;
  if (find_directory(B_USER_SETTINGS_DIRECTORY, &settings) != B_OK) return {};
  return std::string(settings.Path()) + "/KOREVA/Sonivo/Playlist.m3u8";
}
