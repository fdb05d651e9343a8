#include "player/playlist.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr const char* kExtensions[] = {".mp3", ".ogg", ".oga", ".opus", ".flac", ".wav", ".m4a", ".aac",
                                       ".mp4", ".wma", ".aif", ".aiff", ".ape",  ".wv",  ".mka", ".webm"};

std::vector<std::string> audio_files_in(const fs::path& folder) {
  std::vector<std::string> files;
  std::error_code error;
  // Links to folders are not followed, so a loop of them ends nowhere.
  fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied, error);
  for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
    std::error_code ignored;
    if (entry->is_regular_file(ignored) && is_audio_name(entry->path().string()))
      files.push_back(entry->path().string());
  }
  std::sort(files.begin(), files.end());
  return files;
}

} // namespace

bool is_audio_name(const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(std::begin(kExtensions), std::end(kExtensions), extension) != std::end(kExtensions);
}

int32 TPlaylist::Add(const std::string& path) {
  std::error_code error;
  const bool isFolder = fs::is_directory(path, error);
  const std::vector<std::string> files = isFolder ? audio_files_in(path) : std::vector<std::string>{path};
  for (const std::string& file : files) {
    TSong song;
    song.path = fs::absolute(file, error).lexically_normal().string();
    song.title = fs::path(file).stem().string();
    fSongs.push_back(std::move(song));
  }
  return static_cast<int32>(files.size());
}

TSong* TPlaylist::At(int32 index) {
  return index >= 0 && index < Count() ? &fSongs[static_cast<size_t>(index)] : nullptr;
}

bool TPlaylist::SetCurrent(int32 index) {
  if (At(index) == nullptr) return false;
  fCurrent = index;
  return true;
}

int32 TPlaylist::Neighbour(int32 direction) const {
  int32 index = fCurrent + direction;
  while (At(index) && At(index)->failed) index += direction;
  return At(index) ? index : -1;
}
