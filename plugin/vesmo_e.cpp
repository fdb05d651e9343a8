#include "plugin/vesmo_e.h"

#include "common/app_info.h"
#include "interapp/inter_app_prefs.h"
#include "language/llt.h"
#include "language/load_language.h"
#include "platform/app/message.h"
#include "platform/interface/display_language.h"
#include "plugin/app_privacy.h"
#include "plugin/exit_state.h"
#include "plugin/pref.h"
#include "plugin/show_help.h"
#include "plugin/vesmo_e_comm_man.h"
#include "toolkit/alerts.h"

#include <cstring>
#include <optional>
#include <string>
#include <utility>

namespace {

constexpr const char* kCredit = "by the Vesmo Editor team";
constexpr const char* kStateFolder = "VesmoE";
constexpr const char* kStateFile = "VesmoE_ExitStates.arc";

std::unique_ptr<char[]> heap_copy(const std::string& text) {
  auto copy = std::make_unique<char[]>(text.size() + 1);
  std::memcpy(copy.get(), text.c_str(), text.size() + 1);
  return copy;
}

template <typename T>
void destroy(T** object) {
  delete std::exchange(*object, nullptr);
}

/** Stays when the plug-in goes: it belongs to the image and ends with that. */
TAppPrivacy& new_app_privacy() {
  static std::optional<TAppPrivacy> record;
  return record.emplace();
}

void show_language_failure(const char* text, const char* caption, const char* button) {
  koreva::post_msg(text, caption, {button, 'U', true}, "");
}

void show_missing_key(const char* title, const char* key, const char* button) {
  koreva::show_msg(key, title, {button, 0, true}, "", koreva::kStopAlert);
}

} // namespace

TVesmoE::TVesmoE(PluginConstructorStruct*)
    : fNameText(heap_copy(gAppName)), fInfoText(heap_copy(std::string(gAppName) + "  " + kCredit)) {
  fName = fNameText.get();
  fInfo = fInfoText.get();
  set_language_alert(show_language_failure);
  TLLT::SetMissingKeyAlert(show_missing_key);
  // The settings choose the language, and both must be there before the manager is.
  gAppPrivacy = &new_app_privacy();
  gExitState = new TExitState;
  gIAP = new TInterAppPrefs;
  gIAP->SetAppSignatureRef(gAppSignature);
  gIAP->AddItem(new TIAPItemAccKeyFormat);
  gIAP->AddItem(new TIAPItemFlatToolBar);
  gPref = new TPref;
  load_global(kStateFolder, kStateFile);
  gLLT = new TLLT;
  load_language(vesmo_editor_fname().c_str());
  set_display_language(gLLT->Text("Locale"));
  fCommMan = new TVesmoECommMan;
  fCommMan->Run();
}

/** Returns when the manager has handled all that it was sent: windows that it closes have then recorded their state. */
void TVesmoE::WaitForManager() const {
  const BMessage question('wait');
  BMessage answer;
  BMessenger(fCommMan).SendMessage(&question, &answer);
}

TVesmoE::~TVesmoE() {
  WaitForManager();
  save_exit_state(kStateFolder, kStateFile);
  if (fCommMan->Lock()) fCommMan->Quit();
  destroy(&gExitState);
  destroy(&gIAP);
  destroy(&gLLT);
  destroy(&gPref);
}

bool TVesmoE::Init() {
  fCommMan->PostMessage(kMsgOpenMain);
  return true;
}

void TVesmoE::Cleanup() {
  for (const uint32 request : {kMsgCloseAbout, kMsgCloseFineTag, kMsgCloseCommonPref, kMsgCloseMain}) {
    fCommMan->PostMessage(request);
  }
}

bool TVesmoE::About(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPrepareAbout);
  return true;
}

bool TVesmoE::Prefs(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPreparePref);
  return true;
}
