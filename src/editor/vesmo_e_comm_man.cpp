#include "editor/vesmo_e_comm_man.h"

#include "commands/key_bindings.h"
#include "editor/show_help.h"
#include "interapp/iap_win.h"
#include "interapp/inter_app_prefs.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/reaction_time.h"
#include "platform/app/looper_lock.h"
#include "plugin/exit_state.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "window/editor_window.h"

#include <algorithm>
#include <utility>

namespace {
/** The player loads the companion some time after the editor; a request for its window is retried that long. */
constexpr bigtime_t kCompanionComesUs = 3000000;
/** Timeout for a window that is waiting for its user: it handles no messages and keeps its lock. */
constexpr bigtime_t kPatienceUs = 200000;
constexpr size_t kMostFilesKept = 16;
} // namespace

TVesmoECommMan::TVesmoECommMan()
    : TFamilyCommMan("VesmoE Communication Manager", "VesmoD Communication Manager", vesmo_editor_fname()) {
  fEditorName.Register();
}

void TVesmoECommMan::Quit() {
  EndWatches();
  fEditorName.Unregister();
  CloseAboutWindowRqtd();
  CloseFineTimeTagWindowRqtd();
  CloseMainWindowRqtd();
  gIAP->EndWindow();
  WaitForWindowThreads();
  TFamilyCommMan::Quit();
}

void TVesmoECommMan::WaitForWindowThreads() {
  for (const thread_id thread : fWindowThreads) wait_for_thread(thread, nullptr);
}

void TVesmoECommMan::MessageReceived(BMessage* message) {
  if (!HandleRequest(message) && !HandleNotice(message)) TFamilyCommMan::MessageReceived(message);
  if (message->what == kMsgPartnerConnects && fPrefRetry) PrepareOpenPrefWindowRqtd();
}

bool TVesmoECommMan::HandleRequest(BMessage* message) {
  switch (message->what) {
  case kMsgOpenMain:
    OpenMainWindowRqtd();
    return true;
  case B_REFS_RECEIVED:
    RefsReceived(message);
    return true;
  case kMsgPrepareAbout:
  case B_ABOUT_REQUESTED:
    PrepareOpenAboutWindowRqtd();
    return true;
  case kMsgOpenAbout:
    OpenAboutWindowRqtd(*message);
    return true;
  case kMsgPreparePref:
  case kMsgPreferences:
    PrepareOpenPrefWindowRqtd();
    return true;
  case kMsgFineTimeTag:
    MItemFineTimeTagClicked(*message);
    return true;
  case kMsgOfferSongLyrics:
    OfferSongLyrics(message);
    return true;
  case kMsgHelp:
    MItemHelpClicked();
    return true;
  case kMsgCommonPref:
    MItemKOREVACommonPrefClicked();
    return true;
  case kMsgCloseAbout:
    CloseAboutWindowRqtd();
    return true;
  case kMsgCloseFineTag:
    CloseFineTimeTagWindowRqtd();
    return true;
  case kMsgCloseCommonPref:
    CloseKOREVACommonPrefWindowRqtd();
    return true;
  case kMsgCloseMain:
    CloseMainWindowRqtd();
    return true;
  case kMsgMainClosed:
    MainWindowClosed(*message);
    return true;
  default:
    return false;
  }
}

bool TVesmoECommMan::HandleNotice(BMessage* message) {
  switch (message->what) {
  case kMsgStayOnTop:
  case kMsgDefaultStatBar:
  case kMsgToolBar:
  case kMsgAppearance:
  case kMsgPollInterval:
    gPref->Unarchive(*message);
    if (fMainWindow) fMainAddress.SendCoalesced(*message); // it reads the settings, so one notice is enough
    return true;
  case kMsgOptions:
    gPref->UnarchiveOptions(*message);
    if (fMainWindow) fMainAddress.SendCoalesced(*message);
    return true;
  case kMsgKeys:
    gKeyBindings->Unarchive(*message);
    if (fMainWindow) fMainAddress.SendCoalesced(*message);
    return true;
  case kMsgStatBarStr:
    gPref->Unarchive(*message);
    Forward(message);
    return true;
  case kMsgFollowDocument:
    Forward(message);
    return true;
  case kMsgEncoding:
  case kMsgLineEnds:
  case kMsgReadEncoding:
  case kMsgTimeOffset:
    gPref->Unarchive(*message);
    return true;
  case kMsgStampHint:
  case kMsgOptionsChosen:
    SendMessage(message); // for its preferences window
    return true;
  default:
    return false;
  }
}

// The window may be quitting on its own thread: only its messenger or its lock is safe to use.
void TVesmoECommMan::Forward(BMessage* message) {
  if (fMainWindow == nullptr) return;
  // The window reads texts and common preferences itself, so these notices can be coalesced: none is lost to a full
  // queue.
  if (message->what == kMsgLanguageChanged || message->what == kMsgIAPChanged)
    fMainAddress.SendCoalesced(*message);
  else
    fMainAddress.SendMessage(message, BMessenger(), kPatienceUs);
}

void TVesmoECommMan::OpenMainWindowRqtd() {
  OpenMainWindow();
}

bool TVesmoECommMan::LockMainWindow(bigtime_t timeout) const {
  if (fMainWindow == nullptr || fMainAddress.LockTargetWithTimeout(timeout) != B_OK) return false;
  // A window can still be locked between the end of its loop and its deletion.
  if (fMainAddress.IsValid()) return true;
  fMainWindow->Unlock();
  return false;
}

bool TVesmoECommMan::ActivateMainWindow() const {
  // A window that is quitting, and whose kMsgMainClosed has not arrived yet, counts as closed.
  const bool isLocked = LockMainWindow(kPatienceUs);
  if (!isLocked && (fMainWindow == nullptr || !fMainAddress.IsValid())) return false;
  fMainProxy.Activate();
  if (isLocked) fMainWindow->Unlock();
  return true;
}

void TVesmoECommMan::OpenMainWindow() {
  if (ActivateMainWindow()) return;
  fMainWindow = new TVesmoEWin(gExitState->fWindowFrame, this);
  fMainAddress = BMessenger(fMainWindow);
  fMainProxy = fMainWindow->Proxy();
  fFilesSent = 0;
  fLastFiles.clear();
  const BMessage opened(kMsgDocumentOpened);
  SendMessage(&opened);
  const TLooperLock lock(fMainWindow);
  fMainWindow->Show();
  fWindowThreads.push_back(fMainWindow->Thread());
}

void TVesmoECommMan::RefsReceived(BMessage* message) {
  OpenMainWindow();
  if (fMainAddress.SendMessage(message, BMessenger(this), kPatienceUs) != B_OK) return;
  ++fFilesSent;
  fLastFiles.push_back(*message);
  if (fLastFiles.size() > kMostFilesKept) fLastFiles.pop_front();
}

// A window that closes after a question about unsaved lyrics may leave requests to open files in its queue.
void TVesmoECommMan::ReopenFiles(int32 taken) {
  const int32 lost = fFilesSent - taken;
  std::deque<BMessage> files = std::exchange(fLastFiles, {});
  while (static_cast<int32>(files.size()) > std::max(lost, int32{0})) files.pop_front();
  for (BMessage& file : files) RefsReceived(&file);
}

bool TVesmoECommMan::FindMainWindowFrame(BRect* frame) const {
  return fMainWindow && fMainAddress.IsValid() && fMainProxy.GetFrame(frame);
}

void TVesmoECommMan::PrepareOpenAboutWindowRqtd() {
  const BMessage request = BesideRequest(kMsgOpenAbout);
  PostMessage(&request);
}

void TVesmoECommMan::PrepareOpenPrefWindowRqtd() {
  fPrefRetry.reset();
  const BMessage request = BesideRequest(kMsgOpenPref);
  if (SendMessage(&request) == B_OK) return;
  const bigtime_t leftUs = fMadeUs + kCompanionComesUs - system_time();
  if (leftUs <= 0)
    return notify(std::string(gLLT->Text("Err_Cannot_Show_Pref_Win")) + "\n\n" + gLLT->Text("Hint_Need_VSMD"));
  const BMessage again(kMsgPreparePref);
  fPrefRetry = std::make_unique<BMessageRunner>(BMessenger(this), &again, leftUs, 1);
}

void TVesmoECommMan::MItemKOREVACommonPrefClicked() {
  BRect frame;
  FindMainWindowFrame(&frame);
  frame.top += 20; // leaves the title and the menus of the editor visible
  if (gIAP->ShowWindow(frame) != B_OK) return notify(gLLT->Text("Err_Cannot_Show_Common_Pref"));
  if (TIAPWin* const window = gIAP->LockWindow()) {
    BringUp(window);
    window->Unlock();
  }
}

void TVesmoECommMan::MItemHelpClicked() {
  show_help();
}

void TVesmoECommMan::LanguageChanged(const BMessage&) {
  if (!ReloadLanguage()) return;
  SetFineTagWinLabel();
  SetAboutWinContent();
}

void TVesmoECommMan::IAPChanged(const BMessage& message) {
  TFamilyCommMan::IAPChanged(message);
  std::string item;
  if (message.FindString("IAP:SrcIAPItem", &item) != B_OK || item != "AccKeyFormat") return;
  SetFineTagWinLabel();
  SetAboutWinContent();
}

void TVesmoECommMan::MainWindowClosed(const BMessage& message) {
  BMessenger window;
  // A late notice of an earlier window must not affect the current one, even at the same memory address.
  const bool isNamed = message.FindMessenger("window", &window) == B_OK;
  if (isNamed ? window != fMainAddress : fMainAddress.IsValid()) return; // unnamed: only if the window is gone
  fMainWindow = nullptr;
  CloseFineTimeTagWindowRqtd(); // there is nothing left to shift
  ReopenFiles(message.GetInt32("FilesTaken", fFilesSent));
}

void TVesmoECommMan::CloseMainWindowRqtd() {
  fLastFiles.clear();
  if (LockMainWindow(B_INFINITE_TIMEOUT)) fMainWindow->Quit();
  fMainWindow = nullptr;
}

void TVesmoECommMan::CloseKOREVACommonPrefWindowRqtd() {
  gIAP->CloseWindow(false);
}
