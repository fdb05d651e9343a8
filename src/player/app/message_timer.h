#pragma once

#include "platform/app/message.h"
#include "platform/app/message_runner.h"

#include <memory>

/** Sends a message without fields to the player after a delay or at intervals. Stopped by its destructor. */
class TMessageTimer {
public:
  explicit TMessageTimer(const BMessenger& player) : fPlayer(player) {}

  /** Restarts the timer, also for another message. */
  void StartOnce(uint32 what, bigtime_t delayUs) { Start(what, delayUs, 1); }
  /** Leaves a running timer alone. */
  void KeepRunning(uint32 what, bigtime_t intervalUs) {
    if (!fRunner) Start(what, intervalUs, -1);
  }
  void Stop() { fRunner.reset(); }

private:
  void Start(uint32 what, bigtime_t intervalUs, int32 count) {
    const BMessage message(what);
    fRunner = std::make_unique<BMessageRunner>(fPlayer, &message, intervalUs, count);
  }

  const BMessenger fPlayer;
  std::unique_ptr<BMessageRunner> fRunner;
};
