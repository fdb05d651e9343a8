#include "player/model/watched_folders.h"

#include <algorithm>
#include <climits>

bool is_below(std::string_view path, std::string_view folder) {
  if (folder.ends_with('/')) folder.remove_suffix(1);
  return path.starts_with(folder) && path.substr(folder.size()).starts_with('/');
}

TWatchedFolders with_folder(TWatchedFolders folders, std::string folder) {
  while (folder.size() > 1 && folder.ends_with('/')) folder.pop_back();
  if (!folder.starts_with('/') || folder.size() >= PATH_MAX || folder.find('\0') != std::string::npos) return folders;
  const bool isWatched = std::ranges::any_of(
      folders, [&](const std::string& other) { return folder == other || is_below(folder, other); });
  if (isWatched) return folders;
  TWatchedFolders more = folders;
  std::erase_if(more, [&](const std::string& other) { return is_below(other, folder); });
  more.push_back(std::move(folder));
  return more.size() > kMostWatchedFolders ? folders : more;
}
