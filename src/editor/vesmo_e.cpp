#include "editor/vesmo_e.h"

#include "commands/key_bindings.h"
#include "common/app_info.h"
#include "editor/show_help.h"
#include "editor/vesmo_e_comm_man.h"
#include "family/family_globals.h"
#include "plugin/exit_state.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"

#include <utility>

namespace {

constexpr const char* kStateFolder = "VesmoE";
constexpr const char* kStateFile = "VesmoE_ExitStates.arc";

} // namespace

TVesmoE::TVesmoE(PluginConstructorStruct*) : TFamilyPlugin(gAppName) {
  // Order: settings, then the language that they choose, then the manager, which needs both.
  make_app_privacy();
  gExitState = new TExitState;
  make_settings();
  load_global(kStateFolder, kStateFile);
  if (!are_settings_held_off()) {
    load_options();
    load_key_bindings();
  }
  make_texts(vesmo_editor_fname());
  StartManager(new TVesmoECommMan);
}

TVesmoE::~TVesmoE() {
  Manager().WaitForWindows();
  EndSettings(save_exit_state(kStateFolder, kStateFile));
  EndManager();
  delete std::exchange(gExitState, nullptr);
  delete_settings_and_texts();
}

bool TVesmoE::Init() {
  Manager().PostMessage(kMsgOpenMain);
  return true;
}

void TVesmoE::Cleanup() {
  for (const uint32 request : {kMsgCloseAbout, kMsgCloseFineTag, kMsgCloseCommonPref, kMsgCloseMain}) {
    Manager().PostMessage(request);
  }
}
