#include "family/family_comm_man.h"

#include "family/about_content.h"
#include "family/language_watch.h"
#include "interapp/inter_app_prefs.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "platform/app/application.h"
#include "platform/app/looper_lock.h"
#include "platform/app/node_monitor.h"
#include "platform/interface/display_language.h"
#include "platform/support/reported_once.h"
#include "plugin/app_privacy.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "toolkit/krv_about_win.h"
#include "toolkit/placement.h"

#include <utility>

namespace {
/** Both plug-ins store the preference; one report is enough. */
constexpr const char* kUnsaved = "common preferences not saved";
} // namespace

TFamilyCommMan::TFamilyCommMan(const char* name, const char* partnerName, std::string pluginPath)
    : TCommMan(name, partnerName), fPluginPath(std::move(pluginPath)), fIAPFilter(new TIAPFilter(BMessenger(this))),
      fLanguageWatch(std::make_unique<TNodeMonitorHandler>(kMsgLanguageNode)) {
  AddHandler(fLanguageWatch.get());
  if (const TLooperLock lock(be_app); lock) be_app->AddCommonFilter(fIAPFilter);
}

TFamilyCommMan::~TFamilyCommMan() = default;

thread_id TFamilyCommMan::Run() {
  const thread_id thread = TCommMan::Run();
  if (thread >= 0) set_node_monitor_language(fPluginPath, fLanguageWatch.get());
  return thread;
}

void TFamilyCommMan::MessageReceived(BMessage* message) {
  switch (message->what) {
  case kMsgIAPChanged:
    IAPChanged(*message);
    return Forward(message);
  case kMsgIAPUnsent:
    for (auto& [item, notice] : fIAPFilter->TakeUnsent()) MessageReceived(&notice);
    return;
  case kMsgLanguageNode:
    return NodeLanguageChanged();
  case kMsgLanguageChanged:
    gPref->Unarchive(*message);
    LanguageChanged(*message);
    return Forward(message);
  default:
    TCommMan::MessageReceived(message);
  }
}

void TFamilyCommMan::WaitForWindows() {
  EndWaiting();
  const BMessage question(kMsgWait);
  BMessage answer;
  BMessenger(this).SendMessage(&question, &answer);
}

void TFamilyCommMan::NodeLanguageChanged() {
  PostMessage(kMsgLanguageChanged);
}

void TFamilyCommMan::IAPChanged(const BMessage& message) {
  const status_t status = gIAP->SetValue(message);
  if (status == B_OK) forget_reported(kUnsaved);
  if (status == B_IO_ERROR && should_report(kUnsaved, kUnsaved)) notify(gLLT->Text("Err_Settings_Not_Saved"));
}

BMessage TFamilyCommMan::BesideRequest(uint32 code) const {
  BMessage request(code);
  BRect frame;
  const bool hasWindow = FindMainWindowFrame(&frame);
  request.AddBool("BesideDlg", hasWindow);
  if (hasWindow) request.AddRect("WinFrame", frame);
  return request;
}

void TFamilyCommMan::MoveBeside(BWindow* window, const BMessage& request) {
  BRect neighbour;
  if (request.GetBool("BesideDlg") && request.FindRect("WinFrame", &neighbour) == B_OK) move_beside(window, neighbour);
}

void TFamilyCommMan::OpenAboutWindowRqtd(const BMessage& message) {
  if (fAboutWindow == nullptr) {
    fAboutWindow = MakeAboutWindow();
    SetAboutWinContent();
    MoveBeside(fAboutWindow, message);
  }
  BringUp(fAboutWindow);
}

void TFamilyCommMan::SetAboutWinContent() {
  if (const TLooperLock lock(fAboutWindow); lock) fAboutWindow->SetContent(about_content(PluginPath()));
}

void TFamilyCommMan::CloseAboutWindowRqtd() {
  BWindow* window = std::exchange(fAboutWindow, nullptr);
  CloseWindow(&window);
}

void TFamilyCommMan::EndWatches() {
  stop_watching(fLanguageWatch.get());
  const TLooperLock lock(be_app);
  if (lock && be_app->RemoveCommonFilter(fIAPFilter)) delete fIAPFilter;
}

bool TFamilyCommMan::ReloadLanguage() {
  if (!gAppPrivacy->ShouldBeLanguageChanged()) return false;
  load_language(fPluginPath.c_str());
  set_display_language(gLLT->Text("Locale"));
  set_node_monitor_language(fPluginPath, fLanguageWatch.get()); // the chosen file may have changed
  BMessage notice(kMsgHostLanguage);
  notice.AddString("path", gPref->Values()->languageFile);
  BMessenger(be_app).SendMessage(&notice, BMessenger(), 0);
  return true;
}
