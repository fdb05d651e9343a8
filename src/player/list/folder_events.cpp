#include "player/list/folder_events.h"

#include "player/list/song_files.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr uint32_t kChanges =
    IN_CREATE | IN_DELETE | IN_MOVED_FROM | IN_MOVED_TO | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr int64 kLongestPollMs = 3600000;

/** The end of a watch follows an event of its own. Files in a folder other than songs do not matter. */
bool concerns_songs(const inotify_event& event) {
  if (event.mask & IN_IGNORED) return false;
  return event.len == 0 || (event.mask & IN_ISDIR) || is_audio_name(event.name);
}

} // namespace

TFolderEvents::TFolderEvents()
    : fInotify(inotify_init1(IN_CLOEXEC | IN_NONBLOCK)), fWake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

TFolderEvents::~TFolderEvents() {
  if (fInotify >= 0) close(fInotify);
  if (fWake >= 0) close(fWake);
}

/** A folder that has disappeared meanwhile or cannot be read is no matter of limits. */
bool TFolderEvents::Watch(const std::string& folder) {
  if (fInotify < 0) return false;
  const int watch = inotify_add_watch(fInotify, folder.c_str(), kChanges);
  if (watch < 0) return errno != ENOSPC && errno != ENOMEM;
  fWatches[watch] = fScan;
  return true;
}

void TFolderEvents::EndScan() {
  std::erase_if(fWatches, [this](const auto& watch) {
    const bool isOld = watch.second != fScan;
    if (isOld) inotify_rm_watch(fInotify, watch.first);
    return isOld;
  });
}

bool TFolderEvents::WaitForChange(std::chrono::steady_clock::time_point until) {
  using namespace std::chrono;
  const auto now = steady_clock::now();
  const int64 ms = until <= now ? 0 : std::min<int64>(ceil<milliseconds>(until - now).count(), kLongestPollMs);
  pollfd waits[] = {{fInotify, POLLIN, 0}, {fWake, POLLIN, 0}}; // a negative descriptor is ignored
  if (poll(waits, 2, static_cast<int>(ms)) <= 0) return false;
  uint64_t wakes = 0;
  if (waits[1].revents && read(fWake, &wakes, sizeof wakes) > 0) return false;
  return waits[0].revents && HasChanges();
}

/** Reads all that have been reported; after an overflow of the queue anything may have changed. */
bool TFolderEvents::HasChanges() {
  alignas(inotify_event) char buffer[16384];
  bool has = false;
  for (ssize_t size = 0; (size = read(fInotify, buffer, sizeof buffer)) > 0;) {
    for (ssize_t at = 0; at < size;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(buffer + at);
      has |= concerns_songs(event);
      at += static_cast<ssize_t>(sizeof event + event.len);
    }
  }
  return has;
}

void TFolderEvents::Wake() {
  const uint64_t one = 1;
  [[maybe_unused]] const ssize_t written = write(fWake, &one, sizeof one);
}
