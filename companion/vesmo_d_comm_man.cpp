#include "companion/vesmo_d_comm_man.h"

#include "common/app_info.h"
#include "companion/display_state.h"
#include "companion/display_window.h"
#include "companion/prefs/notices.h"
#include "companion/prefs/vesmo_d_pref_win.h"
#include "companion/vesmo_d.h"
#include "interapp/inter_app_prefs.h"
#include "language/load_language.h"
#include "lyrics/document_notices.h"
#include "lyrics/reaction_time.h"
#include "plugin/about_content.h"
#include "plugin/pref.h"
#include "window/placement.h"

#include <utility>

TVesmoDCommMan::TVesmoDCommMan(std::string pluginPath)
    : TFamilyCommMan("VesmoD Communication Manager", "VesmoE Communication Manager", std::move(pluginPath)) {}

void TVesmoDCommMan::Quit() {
  EndWatches();
  ClosePrefWindowRqtd();
  CloseAboutWindowRqtd();
  CloseMainWindowRqtd();
  TFamilyCommMan::Quit();
}

void TVesmoDCommMan::WaitForWindows() {
  const BMessage question('wait');
  BMessage answer;
  BMessenger(this).SendMessage(&question, &answer);
}

void TVesmoDCommMan::MessageReceived(BMessage* message) {
  if (!HandleRequest(message) && !HandleNotice(message)) TFamilyCommMan::MessageReceived(message);
}

bool TVesmoDCommMan::HandleRequest(BMessage* message) {
  switch (message->what) {
  case kMsgOpenMain:
  case kMsgReopenMain:
    OpenMainWindowRqtd(message->what == kMsgOpenMain);
    return true;
  case kMsgPrepareAbout:
    PrepareRqtd(kMsgOpenAbout);
    return true;
  case kMsgOpenAbout:
    OpenAboutWindowRqtd(*message);
    return true;
  case kMsgPreparePref:
    PrepareRqtd(kMsgOpenPref);
    return true;
  case kMsgOpenPref:
    OpenPrefWindowRqtd(*message);
    return true;
  case kMsgCloseAbout:
    CloseAboutWindowRqtd();
    return true;
  case kMsgCloseMain:
    CloseMainWindowRqtd();
    return true;
  default:
    return false;
  }
}

bool TVesmoDCommMan::HandleNotice(BMessage* message) {
  switch (message->what) {
  case kMsgIAPChanged:
    IAPChanged(*message);
    Forward(message);
    return true;
  case kMsgLanguageNode:
    PostMessage(kMsgLanguageChanged);
    return true;
  case kMsgLanguageChanged:
    LanguageChanged(message);
    return true;
  case kMsgFollowDocument:
    SendMessage(message);
    return true;
  case kMsgDocumentOpened:
    Forward(message);
    return true;
  case kMsgStampHint:
    StampHintCame(*message);
    return true;
  case kNoticeStayOnTop:
  case kNoticeToolBar:
  case kNoticePollInterval:
  case kNoticeDisplay:
  case kNoticeAppearance:
  case kNoticeEncoding:
  case kNoticeReadEncoding:
  case kNoticeLineEnds:
  case kNoticeTimeOffset:
    SettingsChanged(message);
    return true;
  default:
    return false;
  }
}

void TVesmoDCommMan::Forward(BMessage* message) {
  if (fMainWindow) fMainWindow->PostMessage(message);
  if (fPrefWindow) fPrefWindow->PostMessage(message);
}

void TVesmoDCommMan::SettingsChanged(BMessage* message) {
  gPref->Unarchive(*message);
  SendMessage(message);
  Forward(message);
}

void TVesmoDCommMan::LanguageChanged(BMessage* message) {
  // The files are watched by both managers; what the user has chosen is told by this one alone.
  if (message->HasField("LLTF")) {
    gPref->Unarchive(*message);
    SendMessage(message);
  }
  if (ReloadLanguage()) SetAboutWinContent();
  Forward(message);
}

void TVesmoDCommMan::IAPChanged(const BMessage& message) {
  gIAP->SetValue(message);
  SetAboutWinContent();
}

void TVesmoDCommMan::OpenMainWindowRqtd(bool takesFocus) {
  if (fMainWindow == nullptr) fMainWindow = new TVesmoDWin(gDisplayState->fWindowFrame, BMessenger(this));
  if (!fMainWindow->Lock()) return;
  fMainWindow->SetAvoidsFocus(!takesFocus);
  fMainWindow->BringUp();
  fMainWindow->Unlock();
}

void TVesmoDCommMan::BringUp(TKRVWin* window) {
  if (!window->Lock()) return;
  window->BringUp();
  window->Unlock();
}

void TVesmoDCommMan::PrepareRqtd(uint32 code) {
  BMessage request(code);
  const bool hasWindow = fMainWindow && fMainWindow->Lock();
  request.AddBool("BesideDlg", hasWindow);
  if (hasWindow) {
    request.AddRect("WinFrame", fMainWindow->Frame());
    fMainWindow->Unlock();
  }
  PostMessage(&request);
}

void TVesmoDCommMan::OpenAboutWindowRqtd(const BMessage& message) {
  if (fAboutWindow == nullptr) {
    fAboutWindow = new TKRVAboutWin(kDisplayName, gAppVer);
    SetAboutWinContent();
    BRect neighbour;
    if (message.FindRect("WinFrame", &neighbour) == B_OK) move_beside(fAboutWindow, neighbour);
  }
  BringUp(fAboutWindow);
}

void TVesmoDCommMan::OpenPrefWindowRqtd(const BMessage& message) {
  if (fPrefWindow == nullptr) {
    fPrefWindow = new TVesmoDPrefWin(language_folder(PluginPath()), BMessenger(this));
    BRect neighbour;
    if (message.FindRect("WinFrame", &neighbour) == B_OK) move_beside(fPrefWindow, neighbour);
    if (!fStampHint.IsEmpty()) fPrefWindow->PostMessage(&fStampHint);
  }
  BringUp(fPrefWindow);
}

void TVesmoDCommMan::StampHintCame(const BMessage& message) {
  fStampHint = message;
  if (fPrefWindow) fPrefWindow->PostMessage(&fStampHint);
}

void TVesmoDCommMan::SetAboutWinContent() {
  if (fAboutWindow == nullptr || !fAboutWindow->Lock()) return;
  fAboutWindow->SetContent(about_content(PluginPath()));
  fAboutWindow->Unlock();
}

void TVesmoDCommMan::End(BWindow* window) {
  if (window == nullptr || !window->Lock()) return;
  const thread_id thread = window->Thread();
  window->Quit();
  if (thread > 0) wait_for_thread(thread, nullptr);
}

void TVesmoDCommMan::CloseMainWindowRqtd() {
  if (fMainWindow && fMainWindow->Lock()) {
    gDisplayState->fIsOpen = !fMainWindow->IsHidden();
    gDisplayState->fWindowFrame = fMainWindow->Frame();
    fMainWindow->Unlock();
  }
  End(std::exchange(fMainWindow, nullptr));
}

void TVesmoDCommMan::CloseAboutWindowRqtd() {
  End(std::exchange(fAboutWindow, nullptr));
}

void TVesmoDCommMan::ClosePrefWindowRqtd() {
  End(std::exchange(fPrefWindow, nullptr));
}
