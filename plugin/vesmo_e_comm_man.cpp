#include "plugin/vesmo_e_comm_man.h"

#include "common/app_info.h"
#include "interapp/iap_win.h"
#include "interapp/inter_app_prefs.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document_notices.h"
#include "lyrics/reaction_time.h"
#include "platform/app/roster.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "plugin/show_help.h"
#include "window/editor_window.h"

namespace {
/** The player loads the companion a while after the editor; until then a wish for its window waits for it. */
constexpr bigtime_t kCompanionComesUs = 3000000;
/** Notices may come faster than the window takes them, and the last one counts. A window that asks its user something
    takes none meanwhile, and is not waited for longer than this. */
constexpr bigtime_t kForwardPatienceUs = 200000;
} // namespace

TVesmoECommMan::TVesmoECommMan()
    : TFamilyCommMan("VesmoE Communication Manager", "VesmoD Communication Manager", vesmo_editor_fname()) {
  be_roster->AddName(gAppSignature, BMessenger(this));
}

void TVesmoECommMan::Quit() {
  EndWatches();
  be_roster->RemoveName(gAppSignature);
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
  if (message->what == kMsgPartnerConnects && fPrefWish) PrepareOpenPrefWindowRqtd();
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
    MItemFineTimeTagClicked();
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
  case 'Spsc':
  case 'Sedr':
  case 'Splc':
  case 'Spac':
  case 'Ssic':
  case 'Sssr':
    gPref->Unarchive(*message);
    Forward(message);
    return true;
  case kMsgFollowDocument:
    Forward(message);
    return true;
  case 'Spec':
  case 'Spcc':
  case 'Sprc':
  case 'Sptc':
    gPref->Unarchive(*message);
    return true;
  case kMsgStampHint:
    SendMessage(message); // its preferences window may show it
    return true;
  default:
    return false;
  }
}

// The window may be ending by itself on its own thread: only its address, or its lock, is safe to use.
void TVesmoECommMan::Forward(BMessage* message) {
  if (fMainWindow) fMainAddress.SendMessage(message, BMessenger(), kForwardPatienceUs);
}

void TVesmoECommMan::OpenMainWindowRqtd() {
  OpenMainWindow();
}

bool TVesmoECommMan::LockMainWindow() const {
  if (fMainWindow == nullptr || !fMainAddress.LockTarget()) return false;
  // Between the end of its loop and its deletion a window can still be locked.
  if (fMainAddress.IsValid()) return true;
  fMainWindow->Unlock();
  return false;
}

void TVesmoECommMan::OpenMainWindow() {
  // One that is ending by itself, and whose notice is still on its way, is as good as closed.
  if (!LockMainWindow()) {
    fMainWindow = new TVesmoEWin(gExitState->fWindowFrame, this);
    fMainAddress = BMessenger(fMainWindow);
    const BMessage opened(kMsgDocumentOpened);
    SendMessage(&opened);
    fMainWindow->Lock();
  }
  if (fMainWindow->IsHidden()) {
    fMainWindow->Show();
    fWindowThreads.push_back(fMainWindow->Thread());
  } else {
    fMainWindow->Activate();
  }
  fMainWindow->Unlock();
}

void TVesmoECommMan::RefsReceived(BMessage* message) {
  OpenMainWindow();
  Forward(message);
}

bool TVesmoECommMan::FindMainWindowFrame(BRect* frame) const {
  if (!LockMainWindow()) return false;
  *frame = fMainWindow->Frame();
  fMainWindow->Unlock();
  return true;
}

void TVesmoECommMan::PrepareOpenAboutWindowRqtd() {
  const BMessage request = BesideRequest(kMsgOpenAbout);
  PostMessage(&request);
}

void TVesmoECommMan::PrepareOpenPrefWindowRqtd() {
  fPrefWish.reset();
  const BMessage request = BesideRequest(kMsgOpenPref);
  if (SendMessage(&request) == B_OK) return;
  const bigtime_t leftUs = fMadeUs + kCompanionComesUs - system_time();
  if (leftUs <= 0)
    return notify(std::string(gLLT->Text("Err_Cannot_Show_Pref_Win")) + "\n\n" + gLLT->Text("Hint_Need_VSMD"));
  const BMessage again(kMsgPreparePref);
  fPrefWish = std::make_unique<BMessageRunner>(BMessenger(this), &again, leftUs, 1);
}

void TVesmoECommMan::MItemKOREVACommonPrefClicked() {
  BRect frame;
  FindMainWindowFrame(&frame);
  frame.top += 20; // its title and the editor's menus stay in sight
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
  // A late notice of an earlier window says nothing of the present one, not even of one at the same place in memory.
  if (message.FindMessenger("window", &window) == B_OK && window != fMainAddress) return;
  fMainWindow = nullptr;
  CloseFineTimeTagWindowRqtd(); // what it would shift is gone
}

void TVesmoECommMan::CloseMainWindowRqtd() {
  if (LockMainWindow()) fMainWindow->Quit();
  fMainWindow = nullptr;
}

void TVesmoECommMan::CloseKOREVACommonPrefWindowRqtd() {
  gIAP->CloseWindow(false);
}
