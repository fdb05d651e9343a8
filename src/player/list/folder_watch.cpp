#include "player/list/folder_watch.h"

#include "platform/support/log.h"
#include "player/list/folder_events.h"
#include "player/list/folder_scan.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <iterator>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

namespace {

using TClock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/** Debounce of scans: this long after the last change, but not later than that after the first one. */
constexpr auto kQuiet = 500ms;
constexpr auto kLongestDebounce = 5s;
/** Until files that are still being written are looked at again. */
constexpr auto kUnsettled = 2s;
/** Polling interval for a folder that is absent, and for those beyond the system's limit of watches. */
constexpr auto kAbsent = 10s;
constexpr auto kUnwatched = 60s;
/** Always scanned after this: a network share does not report what other machines change. */
constexpr auto kLongestWait = 10min;
constexpr auto kLongestEnd = 1s;

template <typename Item>
void append(std::vector<Item>* to, std::vector<Item> from) {
  to->insert(to->end(), std::make_move_iterator(from.begin()), std::make_move_iterator(from.end()));
}

} // namespace

/** Shared by the owner and the thread, which may outlive the owner. */
class TFolderWatch::TWorker : public std::enable_shared_from_this<TWorker> {
public:
  explicit TWorker(std::function<void()> news) : fNews(std::move(news)) {}

  void Start() {
    std::thread([self = shared_from_this()] { self->Run(); }).detach();
  }

  void End() {
    std::unique_lock lock(fMutex);
    fIsEnding = true;
    fEvents.Wake();
    if (!fEnded.wait_for(lock, kLongestEnd, [this] { return fHasEnded; }))
      log_error("player", "a watched folder is not responding; not waiting for it");
  }

  void Watch(const TWatchedFolders& folders) {
    const std::lock_guard lock(fMutex);
    for (std::string& folder : fFolders)
      if (std::ranges::find(folders, folder) == folders.end()) fDropped.push_back(std::move(folder));
    fFolders = folders;
    fHasNewFolders = true;
    fEvents.Wake();
  }

  TNews Take() {
    const std::lock_guard lock(fMutex);
    fIsAnnounced = false;
    return std::exchange(fFound, {.absent = fFound.absent});
  }

private:
  void Run() {
    TClock::time_point firstChange{};
    while (!IsEnding()) {
      try {
        if (TakeFolders() || TClock::now() >= fNextScan) {
          Scan();
          firstChange = {};
        }
      } catch (const std::exception& error) {
        log_error("folder watch", error.what());
        fNextScan = TClock::now() + kUnwatched;
      }
      if (!fEvents.WaitForChange(fNextScan)) continue;
      const auto now = TClock::now();
      if (firstChange == TClock::time_point{}) firstChange = now;
      fNextScan = std::min(now + kQuiet, firstChange + kLongestDebounce);
    }
    const std::lock_guard lock(fMutex);
    fHasEnded = true;
    fEnded.notify_all();
  }

  bool IsEnding() {
    const std::lock_guard lock(fMutex);
    return fIsEnding;
  }

  bool TakeFolders() {
    const std::lock_guard lock(fMutex);
    if (!std::exchange(fHasNewFolders, false)) return false;
    for (const std::string& folder : std::exchange(fDropped, {})) fStates.erase(folder);
    std::map<std::string, TFolderState> folders;
    for (const std::string& folder : fFolders) folders[folder] = std::move(fStates[folder]);
    fStates = std::move(folders);
    return true;
  }

  void Scan() {
    TNews news;
    auto wait = TClock::duration(kLongestWait);
    fEvents.BeginScan();
    for (auto& [folder, state] : fStates) {
      TFolderScan scan = scan_folder(folder, &state, &fEvents, [this] { return IsEnding(); });
      if (scan.isAbsent) wait = std::min<TClock::duration>(wait, kAbsent);
      if (scan.isUnsettled) wait = std::min<TClock::duration>(wait, kUnsettled);
      if (scan.isUnwatched) wait = std::min<TClock::duration>(wait, kUnwatched);
      AddTo(&news, folder, std::move(scan));
    }
    fEvents.EndScan();
    fNextScan = TClock::now() + wait;
    Announce(std::move(news));
  }

  static void AddTo(TNews* news, const std::string& folder, TFolderScan scan) {
    append(&news->come, std::move(scan.come));
    append(&news->gone, std::move(scan.gone));
    if (scan.isFirst) news->firstScanned.push_back(folder);
    if (scan.isAbsent) news->absent.push_back(folder);
    append(&news->errors, std::move(scan.errors));
  }

  void Announce(TNews news) {
    {
      const std::lock_guard lock(fMutex);
      const bool isNew = fFound.absent != news.absent || !news.come.empty() || !news.gone.empty() ||
                         !news.firstScanned.empty() || !news.errors.empty();
      append(&fFound.come, std::move(news.come));
      append(&fFound.gone, std::move(news.gone));
      append(&fFound.firstScanned, std::move(news.firstScanned));
      append(&fFound.errors, std::move(news.errors));
      fFound.absent = std::move(news.absent);
      if (fIsEnding || !isNew || std::exchange(fIsAnnounced, true)) return;
    }
    fNews();
  }

  const std::function<void()> fNews;
  TFolderEvents fEvents;
  std::mutex fMutex; // guards the members up to fHasEnded
  TWatchedFolders fFolders;
  TWatchedFolders fDropped; // meanwhile, perhaps to be watched again from the start
  bool fHasNewFolders = false;
  TNews fFound;
  bool fIsAnnounced = false;
  bool fIsEnding = false;
  bool fHasEnded = false;
  std::condition_variable fEnded;
  // Used by the worker thread only.
  std::map<std::string, TFolderState> fStates;
  TClock::time_point fNextScan = TClock::time_point::max();
};

TFolderWatch::TFolderWatch(std::function<void()> news) : fNews(std::move(news)) {}

TFolderWatch::~TFolderWatch() {
  if (fWorker) fWorker->End();
}

void TFolderWatch::Watch(const TWatchedFolders& folders) {
  fThread.Check();
  if (!fWorker && folders.empty()) return;
  if (!fWorker) {
    fWorker = std::make_shared<TWorker>(fNews);
    fWorker->Start();
  }
  fWorker->Watch(folders);
}

TFolderWatch::TNews TFolderWatch::Take() {
  fThread.Check();
  return fWorker ? fWorker->Take() : TNews();
}
