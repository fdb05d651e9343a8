#include "companion/vesmo_d_comm_man.h"

#include "commands/key_bindings.h"
#include "common/app_info.h"
#include "companion/lyrics_window.h"
#include "companion/lyrics_window_state.h"
#include "companion/prefs/notices.h"
#include "companion/prefs/vesmo_d_pref_win.h"
#include "companion/vesmo_d.h"
#include "language/load_language.h"
#include "lyrics/reaction_time.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "toolkit/krv_about_win.h"

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
  case kMsgFollowDocument:
    SendMessage(message);
    return true;
  case kMsgDocumentOpened:
    Forward(message);
    return true;
  case kMsgStampHint:
    StampHintCame(*message);
    return true;
  case kMsgOptionsChosen:
    gPref->UnarchiveOptions(*message);
    return true;
  case kMsgStayOnTop:
  case kMsgToolBar:
  case kMsgPollInterval:
  case kMsgDefaultStatBar:
  case kMsgAppearance:
  case kMsgEncoding:
  case kMsgReadEncoding:
  case kMsgLineEnds:
  case kMsgTimeOffset:
    SettingsChanged(message);
    return true;
  case kMsgKeys:
    KeysChanged();
    return true;
  case kMsgOptions:
    gPref->UnarchiveOptions(*message);
    SendMessage(message);
    return true;
  default:
    return false;
  }
}

// The windows read the new settings, texts or document themselves, so notices of a kind are coalesced.
void TVesmoDCommMan::Forward(BMessage* message) {
  if (fMainWindow) BMessenger(fMainWindow).SendCoalesced(*message);
  if (fPrefWindow) BMessenger(fPrefWindow).SendCoalesced(*message);
}

void TVesmoDCommMan::SettingsChanged(BMessage* message) {
  gPref->Unarchive(*message);
  SendMessage(message);
  Forward(message);
}

// The page has applied and stored them; the editor's image has its own copy.
void TVesmoDCommMan::KeysChanged() {
  BMessage keys(kMsgKeys);
  gKeyBindings->Archive(&keys);
  SendMessage(&keys);
}

void TVesmoDCommMan::LanguageChanged(const BMessage& message) {
  // Both managers watch the language files; only this one knows the user's choice and forwards it.
  if (message.HasField("LLTF")) SendMessage(&message);
  if (ReloadLanguage()) SetAboutWinContent();
}

void TVesmoDCommMan::IAPChanged(const BMessage& message) {
  TFamilyCommMan::IAPChanged(message);
  SetAboutWinContent();
}

void TVesmoDCommMan::OpenMainWindowRqtd(bool takesFocus) {
  if (fMainWindow == nullptr) fMainWindow = new TLyricsWindow(gLyricsWindowState->fWindowFrame, BMessenger(this));
  if (!fMainWindow->Lock()) return;
  fMainWindow->SetAvoidsFocus(!takesFocus);
  fMainWindow->BringUp();
  fMainWindow->Unlock();
}

void TVesmoDCommMan::BringUp(TKRVWin* window) const {
  if (!window->Lock()) return;
  window->BringUp();
  window->Unlock();
}

bool TVesmoDCommMan::FindMainWindowFrame(BRect* frame) const {
  return fMainWindow && fMainWindow->Proxy().GetFrame(frame);
}

void TVesmoDCommMan::PrepareRqtd(uint32 code) {
  const BMessage request = BesideRequest(code);
  PostMessage(&request);
}

TKRVAboutWin* TVesmoDCommMan::MakeAboutWindow() const {
  return new TKRVAboutWin(kCompanionName, gAppVer, {}, "Display_About_Title");
}

void TVesmoDCommMan::OpenPrefWindowRqtd(const BMessage& message) {
  if (fPrefWindow == nullptr) {
    fPrefWindow = new TVesmoDPrefWin(language_folder(PluginPath()), BMessenger(this));
    MoveBeside(fPrefWindow, message);
    if (!fStampHint.IsEmpty()) fPrefWindow->PostMessage(&fStampHint);
  }
  BringUp(fPrefWindow);
}

void TVesmoDCommMan::StampHintCame(const BMessage& message) {
  fStampHint = message;
  if (fPrefWindow) fPrefWindow->PostMessage(&fStampHint);
}

void TVesmoDCommMan::CloseMainWindowRqtd() {
  if (fMainWindow && fMainWindow->Lock()) {
    gLyricsWindowState->fIsOpen = !fMainWindow->IsHidden();
    gLyricsWindowState->fWindowFrame = fMainWindow->NormalFrame();
    fMainWindow->Unlock();
  }
  BWindow* window = std::exchange(fMainWindow, nullptr);
  CloseWindow(&window);
}

void TVesmoDCommMan::ClosePrefWindowRqtd() {
  BWindow* window = std::exchange(fPrefWindow, nullptr);
  CloseWindow(&window);
}
