#pragma once

#include "platform/kernel/threads.h"
#include "player/app/sonivo_app.h"

#include <atomic>
#include <optional>
#include <string>
#include <vector>

/** Fake sound: every song exists and is a minute long; the position changes by seeking only; records the calls. */
struct StillSource : TSongSource {
  struct Account {
    std::atomic<int32> positionMs{0};
    std::atomic<double> speed{1};
    std::atomic<int> seeks{0};
    std::atomic<int32> fromMs{-1};
    std::atomic<int32> toMs{-1};
    std::optional<TSongPart> part; // for tests that call the source's user themselves, as all below
    std::vector<int32> clicksMs;
    std::string followed; // queued by Follow
    TSoundChoices sound;
    TSongEvents* events = nullptr;
  };
  static constexpr int32 kDurationMs = 60000;

  StillSource(TSongEvents* events, Account* account) : fEvents(events), fAccount(account) { fAccount->events = events; }
  int64 Load(const std::string& path, bool) override {
    fAccount->positionMs = 0;
    fEvents->SongLoaded(++fLoads, {"Title of " + path, "Somebody", kDurationMs, "Album", 7});
    return fLoads;
  }
  void Stop() override { fAccount->followed.clear(); }
  int64 Follow(const std::string& path) override {
    fAccount->followed = path;
    return path.empty() ? 0 : ++fLoads;
  }
  void SetPaused(bool) override {}
  void SetSound(const TSoundChoices& choices) override { fAccount->sound = choices; }
  void FindDevices() override { fEvents->DevicesFound({{"alsa/1", "Headphones"}}); }
  void SeekTo(int32 positionMs) override {
    ++fAccount->seeks;
    fAccount->positionMs = positionMs;
  }
  int64 PlayPart(const TSongPart& part) override {
    fAccount->part = part;
    fAccount->positionMs = part.fromMs;
    return ++fParts;
  }
  void SetClicks(const std::vector<int32>& timesMs) override { fAccount->clicksMs = timesMs; }
  void SetSpeed(double speed) override { fAccount->speed = speed; }
  void SetVolume(double) override {}
  void SetRepeat(int32 fromMs, int32 toMs) override {
    fAccount->fromMs = fromMs;
    fAccount->toMs = toMs;
  }
  int32 PositionMs() override { return fAccount->positionMs; }

private:
  TSongEvents* const fEvents;
  Account* const fAccount;
  int64 fLoads = 0;
  int64 fParts = 0;
};

/** The player without a display and with StillSource, until the test ends. */
struct StillPlayer {
  StillPlayer(const std::vector<std::string>& songs, bool startsPaused) {
    TCommandLine line;
    line.songs = songs;
    line.startsPaused = startsPaused;
    fApp =
        new TSonivoApp(line, [this](TSongEvents* events) { return std::make_unique<StillSource>(events, &fAccount); });
    fThread = fApp->Run();
  }
  ~StillPlayer() {
    fApp->PostMessage(B_QUIT_REQUESTED);
    wait_for_thread(fThread, nullptr);
  }
  StillSource::Account fAccount;
  TSonivoApp* fApp;

private:
  thread_id fThread;
};
