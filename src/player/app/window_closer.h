#pragma once

#include "platform/kernel/thread_checker.h"
#include "player/app/message_timer.h"

#include <vector>

/** Asks the other windows to close before the player ends. One that refuses keeps the player open. Application's
    thread. */
class TWindowCloser {
public:
  /** `player` gets the windows' answers, and kMsgLookAtWindows regularly while they are pending. */
  explicit TWindowCloser(const BMessenger& player) : fPlayer(player), fCheckTimer(player) {}

  /** Windows have been asked and not all have answered, or all have agreed. */
  bool IsClosing() const { return fStage != TStage::kOpen; }
  void Ask(const std::vector<BMessenger>& windows);
  void TakeAnswer(const BMessage& answer);
  /** Detects windows that have gone without an answer, such as those that the user was closing already. */
  void CheckWindows();
  /** True once, when every window has agreed or is gone. */
  bool TakeConsent();

private:
  enum class TStage { kOpen, kAsking, kAgreed, kEnding };
  void Agree();

  ThreadChecker fThread;
  const BMessenger fPlayer;
  TStage fStage = TStage::kOpen;
  std::vector<BMessenger> fAsked;
  size_t fAnswers = 0;
  TMessageTimer fCheckTimer;
};
