/** How the player ends: every other window is asked first, and one that will not close keeps it open. */

#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/display/display.h"
#include "platform/display/display_thread.h"
#include "platform/interface/window.h"
#include "platform/support/log.h"
#include "player/app/open_questions.h"
#include "player/app/sonivo_app.h"
#include "player/frontend/front_end_host.h"
#include "player/model/player_messages.h"
#include "player/window/player_window.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {
constexpr bigtime_t kLookUs = 200000;
}

void TSonivoApp::CloseRequested() {
  display::post(raise_open_questions);          // a window that asks closes only after the answer
  if (fAwaitedAnswers > 0 || fIsEnding) return; // the windows are being asked, or have agreed
  const BMessage quit(B_QUIT_REQUESTED);
  fAskedWindows.clear();
  for (const BMessenger& window : WindowAddresses()) {
    if (window == BMessenger(fWindow)) continue;
    if (window.SendMessage(&quit, BMessenger(this), 0) == B_OK) fAskedWindows.push_back(window);
  }
  fAwaitedAnswers = static_cast<int32>(fAskedWindows.size());
  if (fAwaitedAnswers == 0) return End();
  const BMessage look(kMsgLookAtWindows);
  fCloser = std::make_unique<BMessageRunner>(BMessenger(this), &look, kLookUs);
}

/** A window that the user was closing already goes without an answer. */
void TSonivoApp::LookAtAskedWindows() {
  const auto isThere = [](const BMessenger& window) { return window.IsValid(); };
  if (fAwaitedAnswers > 0 && std::none_of(fAskedWindows.begin(), fAskedWindows.end(), isThere)) End();
}

/** Asked by an editor that has saved its lyrics meanwhile: the closing that it held up begins anew. */
bool TSonivoApp::QuitRequested() {
  if (fWindow == nullptr) return true; // never shown, and without plug-ins then
  PostMessage(kMsgWindowCloses);
  return false;
}

void TSonivoApp::WindowAnswered(const BMessage& message) {
  bool agreed = false;
  if (fAwaitedAnswers <= 0 || message.FindBool("result", &agreed) != B_OK) return;
  if (!agreed) {
    fAwaitedAnswers = -1;
    fCloser.reset();
    return;
  }
  if (--fAwaitedAnswers == 0) End();
}

/** The plug-ins go first, while this looper is alive and takes messages: they have filters in it. */
void TSonivoApp::End() {
  if (std::exchange(fIsEnding, true)) return;
  if (!fKeptPath.empty()) SaveKeptList();
  fStarter.reset();
  fCloser.reset();
  fPlugins.BeginEnd();
  LookAfterPlugins();
}

void TSonivoApp::EndAfterPlugins() {
  fPluginWatch.reset();
  fTicker.reset();
  fKeeper.reset();
  fFinder.reset();
  if (fWindow->Lock()) fWindow->Quit();
  fWindow = nullptr;
  if (fHost->Lock()) fHost->Quit();
  fHost = nullptr;
  fBus.End();
  fSource.reset();
  if (!fPlugins.AreAllGone()) {
    // Its threads and windows are still there, and nothing that they use may go before them.
    log_error("player", "exiting without waiting for a plug-in that is not responding");
    std::_Exit(EXIT_FAILURE);
  }
  display::quit();
  Quit();
}
