#include "player/app/window_closer.h"

#include "player/model/player_messages.h"

#include <algorithm>

namespace {
constexpr bigtime_t kCheckUs = 200000;
}

void TWindowCloser::Ask(const std::vector<BMessenger>& windows) {
  fThread.Check();
  const BMessage quit(B_QUIT_REQUESTED);
  fStage = TStage::kAsking;
  fAnswers = 0;
  fAsked.clear();
  for (const BMessenger& window : windows) {
    if (window.SendMessage(&quit, fPlayer, 0) == B_OK) fAsked.push_back(window);
  }
  if (fAsked.empty()) return Agree();
  fCheckTimer.KeepRunning(kMsgLookAtWindows, kCheckUs);
}

void TWindowCloser::TakeAnswer(const BMessage& answer) {
  fThread.Check();
  bool agreed = false;
  if (fStage != TStage::kAsking || answer.FindBool("result", &agreed) != B_OK) return;
  if (!agreed) {
    fStage = TStage::kOpen;
    fCheckTimer.Stop();
  } else if (++fAnswers == fAsked.size()) {
    Agree();
  }
}

void TWindowCloser::CheckWindows() {
  const auto isThere = [](const BMessenger& window) { return window.IsValid(); };
  if (fStage == TStage::kAsking && std::ranges::none_of(fAsked, isThere)) Agree();
}

void TWindowCloser::Agree() {
  fStage = TStage::kAgreed;
  fCheckTimer.Stop();
}

bool TWindowCloser::TakeConsent() {
  if (fStage != TStage::kAgreed) return false;
  fStage = TStage::kEnding;
  return true;
}
