#include "player/list/folder_scan.h"

#include "player/list/folder_events.h"
#include "player/list/song_files.h"
#include "player/texts/player_texts.h"

#include <sys/stat.h>

#include <algorithm>
#include <ctime>
#include <initializer_list>

namespace {

constexpr ptrdiff_t kMostDepth = 32;
constexpr size_t kMostFolders = 20000;
/** A file is still being written, by a copy or a download, if its last change is more recent. */
constexpr time_t kSettledAfterSeconds = 2;

bool is_hidden(const std::string& path) {
  return path.compare(path.rfind('/') + 1, 1, ".") == 0;
}

/** A time in the future comes from another machine's clock. */
bool is_being_written(const std::string& path) {
  struct stat file {};
  if (stat(path.c_str(), &file) != 0) return true;
  const time_t age = std::time(nullptr) - file.st_mtime;
  return age >= 0 && age < kSettledAfterSeconds;
}

class TScanTaker : public TSongTaker {
public:
  TScanTaker(const std::string& folder, const std::unordered_set<std::string>& known, TFolderEvents* events,
             const std::function<bool()>& isEnding)
      : fFolder(folder), fKnown(known), fEvents(events), fIsEnding(isEnding) {}

  void Take(TSong song) override {
    if (is_hidden(song.path)) return;
    if (!fKnown.contains(song.path)) {
      if (is_being_written(song.path)) {
        fScan.isUnsettled = true;
        return;
      }
      fScan.come.push_back(song);
    }
    fSongs.insert(std::move(song.path));
  }

  void ReportError(std::string /*error*/) override { fIsWhole = false; }

  bool HasEnough() const override { return fIsEnding(); }

  bool Enters(const std::string& folder) override {
    const auto depth = std::count(folder.begin() + static_cast<ptrdiff_t>(fFolder.size()), folder.end(), '/');
    if (depth > 0 && is_hidden(folder)) return false;
    fIsTooDeep |= depth > kMostDepth;
    if (depth > kMostDepth || ++fFolders > kMostFolders) return false;
    if (!fScan.isUnwatched) fScan.isUnwatched = !fEvents->Watch(folder);
    return true;
  }

  /** Each limit is reported once. */
  void ReportLimits(TFolderState* state) {
    const auto report = [&](const char* key, std::initializer_list<std::string> parts) {
      if (state->reported.insert(key).second) fScan.errors.push_back(player_text(key, parts));
    };
    if (fIsTooDeep) report("Player_Err_Watch_Deep", {std::to_string(kMostDepth), fFolder});
    if (fFolders > kMostFolders) report("Player_Err_Watch_Many", {std::to_string(kMostFolders), fFolder});
    if (fSongs.size() >= kMostSongs) report("Player_Err_Many_Songs", {std::to_string(kMostSongs), fFolder});
    if (fScan.isUnwatched) report("Player_Err_Watch_Limit", {fFolder});
  }

  const std::string& fFolder;
  const std::unordered_set<std::string>& fKnown;
  TFolderEvents* const fEvents;
  const std::function<bool()>& fIsEnding;
  TFolderScan fScan;
  std::unordered_set<std::string> fSongs;
  size_t fFolders = 0;
  bool fIsTooDeep = false; // some folders are skipped because of their depth
  bool fIsWhole = true;
};

} // namespace

TFolderScan scan_folder(const std::string& folder, TFolderState* state, TFolderEvents* events,
                        const std::function<bool()>& isEnding) {
  struct stat node {};
  if (stat(folder.c_str(), &node) != 0 || !S_ISDIR(node.st_mode)) return {.isAbsent = true};
  const bool isSameNode = std::exchange(state->node, {node.st_dev, node.st_ino}) == std::pair{node.st_dev, node.st_ino};
  TScanTaker taker(folder, state->songs, events, isEnding);
  gather_folder(folder, &taker);
  const bool isWhole = taker.fIsWhole && taker.fSongs.size() < kMostSongs && !isEnding();
  taker.ReportLimits(state);
  TFolderScan scan = std::move(taker.fScan);
  for (const std::string& path : state->songs) {
    if (taker.fSongs.contains(path)) continue;
    if (isWhole && isSameNode)
      scan.gone.push_back(path);
    else if (!isWhole)
      taker.fSongs.insert(path);
  }
  state->songs = std::move(taker.fSongs);
  scan.isFirst = isWhole && !std::exchange(state->wasScanned, state->wasScanned || isWhole);
  return scan;
}
