#pragma once

#include "player/sound/song_source.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>

/** Records the reports of a source, and waits for them. */
struct SongListener : TSongEvents {
  void SongLoaded(int64 load, const TSongTags& tags) override {
    Change([&] { fTags = tags, fLoaded = load; });
  }
  void SongJoined(int64 load, int64 next, int32 endedMs) override {
    Change([&] { fEnded = load, fJoined = next, fEndedMs = endedMs; });
  }
  void PartEnded(int64 part) override {
    Change([&] { fEndedPart = part; });
  }
  void DeviceLost(const std::string& device) override {
    Change([&] { fLostDevice = device; });
  }
  void DeviceReturned(const std::string& device) override {
    Change([&] { fReturnedDevice = device; });
  }
  void SongEnded(int64 load) override {
    Change([&] { fEnded = load; });
  }
  void SongFailed(int64 load, const std::string& reason) override {
    Change([&] { fReason = reason, fFailed = load; });
  }
  void OutputChanged(bool isSilent) override {
    Change([&] { fIsSilent = isSilent; });
  }
  bool WaitForOutput(bool isSilent) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return fIsSilent == isSilent; });
  }
  template <typename Value>
  bool Wait(const Value& which, const Value& expected) {
    std::unique_lock lock(fMutex);
    return fChanged.wait_for(lock, std::chrono::seconds(30), [&] { return which == expected; });
  }
  std::string Reason() {
    const std::lock_guard lock(fMutex);
    return fReason;
  }
  int64 Joined() {
    const std::lock_guard lock(fMutex);
    return fJoined;
  }
  int64 fLoaded = 0;
  int64 fEnded = 0;
  int64 fFailed = 0;
  int64 fJoined = 0;
  int32 fEndedMs = 0; // of the song before that
  int64 fEndedPart = 0;
  std::string fLostDevice;
  std::string fReturnedDevice;
  bool fIsSilent = false;
  TSongTags fTags;

private:
  template <typename Act>
  void Change(const Act& act) {
    const std::lock_guard lock(fMutex);
    act();
    fChanged.notify_all();
  }

  std::mutex fMutex;
  std::condition_variable fChanged;
  std::string fReason;
};
