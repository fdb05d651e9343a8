#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/model/playlist.h"
#include "player/model/watched_folders.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

/** Watches folders and their subfolders for songs that appear and disappear, by inotify, on a worker thread that exists
    only while folders are watched. After a change the folders are read again, debounced, so that copying thousands of
    songs costs a few scans. Hidden files and folders are ignored, also those of a removable disk's trash, and links to
    folders are not followed. Owned and called by the application's thread. */
class TFolderWatch {
public:
  struct TNews {
    TSongs come{};                           // since the news before, in order
    std::vector<std::string> gone{};         // paths of songs of a folder that is still there itself
    std::vector<std::string> firstScanned{}; // folders read for the first time, with all their songs in `come`
    std::vector<std::string> absent{};       // the watched folders that cannot be read now
    std::vector<std::string> errors{};       // a line each
  };

  /** `news` is called on the worker thread when there is something to take; not again before that is taken. */
  explicit TFolderWatch(std::function<void()> news);
  /** Waits a moment for the worker. If a disk does not respond, the worker is abandoned. */
  ~TFolderWatch();

  /** Replaces the folders; those that stay are not read for the first time again. */
  void Watch(const TWatchedFolders& folders);
  TNews Take();

private:
  class TWorker;

  ThreadChecker fThread;
  const std::function<void()> fNews;
  std::shared_ptr<TWorker> fWorker; // null until a folder is watched
};
