#pragma once

#include "player/sound/song_source.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

/** Records the reports of a source, and waits for them. */
class SongListener : public TSongEvents {
public:
  void SongLoaded(int64 load, const TSongTags& tags) override {
    const std::lock_guard lock(fMutex);
    fLoaded = load;
    fTags = tags;
    fChanged.notify_all();
  }
  void SongEnded(int64 load) override {
    const std::lock_guard lock(fMutex);
    fEnded = load;
    fChanged.notify_all();
  }
  void SongFailed(int64 load, const std::string& reason) override {
    const std::lock_guard lock(fMutex);
    fFailed = load;
    fReason = reason;
    fChanged.notify_all();
  }
  void OutputChanged(bool isSilent) override {
    const std::lock_guard lock(fMutex);
    fIsSilent = isSilent;
    fChanged.notify_all();
  }
  bool WaitForOutput(bool isSilent) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return fIsSilent == isSilent; });
  }
  bool Wait(const int64& which, int64 load) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return which == load; });
  }
  std::string Reason() {
    const std::lock_guard lock(fMutex);
    return fReason;
  }
  int64 fLoaded = 0;
  int64 fEnded = 0;
  int64 fFailed = 0;
  bool fIsSilent = false;
  TSongTags fTags;

private:
  std::mutex fMutex;
  std::condition_variable fChanged;
  std::string fReason;
};
