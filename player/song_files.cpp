#include "player/song_files.h"

#include "player/m3u.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace fs = std::filesystem;

namespace {

constexpr const char* kAudio[] = {".mp3", ".ogg", ".oga", ".opus", ".flac", ".wav", ".m4a", ".aac",
                                  ".mp4", ".wma", ".aif", ".aiff", ".ape",  ".wv",  ".mka", ".webm"};
constexpr const char* kLists[] = {".m3u", ".m3u8"};
// Against lists that name each other without end.
constexpr size_t kMostLists = 1000;
constexpr size_t kMostSongs = 200000;
constexpr uintmax_t kLargestList = 64 << 20;

template <size_t Count>
bool ends_like_one_of(const char* const (&extensions)[Count], const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(std::begin(extensions), std::end(extensions), extension) != std::end(extensions);
}

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

TSong song_of(const std::string& path) {
  std::error_code error;
  TSong song;
  song.path = fs::absolute(path, error).lexically_normal().string();
  song.title = fs::path(path).stem().string();
  return song;
}

/** Reads lists within lists; knows which ones are being read, so that a loop ends. */
class TListReader {
public:
  explicit TListReader(TGathered* gathered) : fGathered(gathered) {}

  void Read(const std::string& path) {
    std::error_code error;
    const std::string real = fs::canonical(path, error).string();
    if (std::find(fBeingRead.begin(), fBeingRead.end(), real) != fBeingRead.end()) {
      return Fault(path + " names itself, by way of the lists in it: left out there");
    }
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kLargestList || ++fLists > kMostLists) {
      return Fault("Cannot read the list " + path);
    }
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    if (!file) return Fault("Cannot read the list " + path);
    fBeingRead.push_back(real);
    Take(path, parse_m3u(bytes, fs::path(real).parent_path().string()));
    fBeingRead.pop_back();
  }

private:
  void Take(const std::string& list, TSongs songs) {
    size_t dead = 0;
    std::string firstDead;
    for (TSong& song : songs) {
      if (fGathered->songs.size() >= kMostSongs) break;
      if (is_list_name(song.path)) {
        Read(song.path);
        continue;
      }
      std::error_code error;
      song.failed = !fs::exists(song.path, error);
      if (song.failed && ++dead == 1) firstDead = song.path;
      fGathered->songs.push_back(std::move(song));
    }
    if (dead == 1) Fault("A song of the list " + list + " is not there: " + firstDead);
    if (dead > 1)
      Fault(std::to_string(dead) + " songs of the list " + list + " are not there, the first: " + firstDead);
  }

  void Fault(std::string text) { fGathered->faults.push_back(std::move(text)); }

  TGathered* const fGathered;
  std::vector<std::string> fBeingRead;
  size_t fLists = 0;
};

} // namespace

bool is_audio_name(const std::string& path) {
  return ends_like_one_of(kAudio, path);
}

bool is_list_name(const std::string& path) {
  return ends_like_one_of(kLists, path);
}

TGathered gather_songs(const std::string& path) {
  TGathered gathered;
  std::error_code error;
  if (fs::is_directory(path, error)) {
    for (const std::string& file : audio_files_in(path)) gathered.songs.push_back(song_of(file));
  } else if (is_list_name(path)) {
    TListReader(&gathered).Read(path);
  } else {
    gathered.songs.push_back(song_of(path));
  }
  if (gathered.songs.empty() && gathered.faults.empty()) gathered.faults.push_back("There is no song in " + path);
  return gathered;
}
