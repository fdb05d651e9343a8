#include "plugin/vesmo_e.h"

#include "common/app_info.h"
#include "platform/app/message.h"
#include "plugin/exit_state.h"
#include "plugin/family_globals.h"
#include "plugin/show_help.h"
#include "plugin/vesmo_e_comm_man.h"

#include <string>
#include <utility>

namespace {

constexpr const char* kStateFolder = "VesmoE";
constexpr const char* kStateFile = "VesmoE_ExitStates.arc";

} // namespace

TVesmoE::TVesmoE(PluginConstructorStruct*)
    : fNameText(heap_copy(gAppName)), fInfoText(heap_copy(std::string(gAppName) + "  " + kCredit)) {
  fName = fNameText.get();
  fInfo = fInfoText.get();
  // The settings choose the language, and both must be there before the manager is.
  gExitState = new TExitState;
  make_settings();
  load_global(kStateFolder, kStateFile);
  make_texts(vesmo_editor_fname());
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
  delete std::exchange(gExitState, nullptr);
  delete_settings_and_texts();
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
