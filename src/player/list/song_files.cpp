#include "player/list/song_files.h"
#include "player/texts/player_texts.h"

#include "platform/support/cut_text.h"
#include "player/list/m3u.h"
#include "player/model/read_file.h"
#include "player/model/song_address.h"
#include "player/model/song_text.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <iterator>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr const char* kAudio[] = {".mp3", ".ogg", ".oga", ".opus", ".flac", ".wav", ".m4a", ".aac",
                                  ".mp4", ".wma", ".aif", ".aiff", ".ape",  ".wv",  ".mka", ".webm"};
constexpr const char* kLists[] = {".m3u", ".m3u8"};
// Bounds recursion through lists that refer to each other.
constexpr size_t kMostLists = 1000;

template <size_t Count>
bool ends_like_one_of(const char* const (&extensions)[Count], const std::string& path) {
  std::string extension = fs::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return std::find(std::begin(extensions), std::end(extensions), extension) != std::end(extensions);
}

TSong song_of(std::string path) {
  TSong song;
  song.path = std::move(path);
  song.title = cut_text(fs::path(song.path).stem().string());
  return song;
}

/** Reads folders and lists recursively; keeps track of the lists being read, to detect cycles. */
class TSongReader {
public:
  explicit TSongReader(TSongTaker* taker) : fTaker(taker) {}

  void Read(const std::string& text) {
    std::error_code error;
    const TSongAddress address = song_address(text, fs::current_path(error).string());
    const std::string& path = address.text;
    const bool isFile = address.refusal.empty() && is_file_path(path);
    if (isFile && fs::is_directory(path, error)) {
      ReadFolder(path);
    } else if (isFile && is_list_name(path)) {
      ReadList(path);
    } else {
      ReadSong(address);
    }
    if (fSongs == 0 && !fHasErrors && !fTaker->HasEnough()) Report(player_text("Player_Err_No_Songs", {path}));
    if (fSongs == kMostSongs) Report(player_text("Player_Err_Many_Songs", {std::to_string(kMostSongs), path}));
  }

  /** Depth first; files and subfolders are sorted together, in byte order. */
  void ReadFolder(const fs::path& folder) {
    if (!fTaker->Enters(folder.string())) return;
    for (const std::string& name : NamesIn(folder)) {
      if (IsDone()) return;
      if (name.ends_with('/')) {
        ReadFolder(folder / name.substr(0, name.size() - 1));
      } else {
        Give(song_of((folder / name).string()));
      }
    }
  }

private:
  /** A missing file is no error yet: it may exist by the time it is played. */
  void ReadSong(const TSongAddress& address) {
    TSong song = song_of(address.text);
    std::error_code error;
    const bool isThere = address.refusal.empty() && is_file_path(song.path) && fs::exists(song.path, error);
    song.error = isThere ? file_type_error(song.path) : address.refusal;
    if (!song.error.empty()) Report(player_text("Player_Err_Cannot_Play", {song.path, song.error}));
    Give(std::move(song));
  }

  /** Songs, and folders with a trailing slash. Links to folders are not followed, since they can form cycles. */
  std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error); !error && entry != fs::directory_iterator() && !IsDone();
         entry.increment(error)) {
      std::error_code ignored;
      const std::string name = entry->path().filename().string();
      if (entry->is_directory(ignored)) {
        if (!entry->is_symlink(ignored)) names.push_back(name + '/');
      } else if (is_audio_name(name) && entry->is_regular_file(ignored)) {
        names.push_back(name);
      }
    }
    if (error) Report(player_text("Player_Err_Read_Folder", {folder.string(), error.message()}));
    std::sort(names.begin(), names.end());
    return names;
  }

  void ReadList(const std::string& path) {
    std::error_code error;
    const std::string real = fs::canonical(path, error).string();
    if (std::find(fBeingRead.begin(), fBeingRead.end(), real) != fBeingRead.end()) {
      return Report(player_text("Player_Err_List_Loop", {path}));
    }
    if (!fs::is_regular_file(path, error) || fs::file_size(path, error) > kLargestListBytes || ++fLists > kMostLists) {
      return Report(player_text("Player_Err_Read_List", {path}));
    }
    const std::optional<std::string> bytes = read_file(path);
    if (!bytes) return Report(player_text("Player_Err_Read_List", {path}));
    if (std::ranges::count(*bytes, '\n') > static_cast<ptrdiff_t>(kMostListLines))
      Report(player_text("Player_Err_Many_Lines", {std::to_string(kMostListLines), path}));
    fBeingRead.push_back(real);
    TakeList(path, parse_m3u(*bytes, fs::path(real).parent_path().string()));
    fBeingRead.pop_back();
  }

  void TakeList(const std::string& list, TSongs songs) {
    size_t dead = 0;
    std::string firstDead;
    for (TSong& song : songs) {
      if (IsDone()) break;
      const bool isFile = song.error.empty() && is_file_path(song.path);
      if (isFile && is_list_name(song.path)) {
        ReadList(song.path);
        continue;
      }
      if (isFile) song.error = file_type_error(song.path);
      if (!song.error.empty() && ++dead == 1) firstDead = song.path + ": " + song.error;
      Give(std::move(song));
    }
    if (dead == 1) Report(player_text("Player_Err_Dead_Song", {list, firstDead}));
    if (dead > 1) Report(player_text("Player_Err_Dead_Songs", {std::to_string(dead), list, firstDead}));
  }

  bool IsDone() const { return fSongs >= kMostSongs || fTaker->HasEnough(); }

  void Give(TSong song) {
    ++fSongs;
    fTaker->Take(std::move(song));
  }

  void Report(std::string text) {
    fHasErrors = true;
    fTaker->ReportError(std::move(text));
  }

  TSongTaker* const fTaker;
  std::vector<std::string> fBeingRead;
  size_t fLists = 0;
  size_t fSongs = 0;
  bool fHasErrors = false;
};

} // namespace

bool is_audio_name(const std::string& path) {
  return ends_like_one_of(kAudio, path);
}

bool is_list_name(const std::string& path) {
  return ends_like_one_of(kLists, path);
}

void gather_songs(const std::string& text, TSongTaker* taker) {
  TSongReader(taker).Read(text);
}

void gather_folder(const std::string& folder, TSongTaker* taker) {
  TSongReader(taker).ReadFolder(folder);
}
