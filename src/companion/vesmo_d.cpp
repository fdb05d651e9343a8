#include "companion/vesmo_d.h"

#include "companion/display_state.h"
#include "companion/vesmo_d_comm_man.h"
#include "family/family_globals.h"
#include "family/plugin_image.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"

#include <string>
#include <utility>

namespace {
constexpr const char* kStateFolder = "VesmoD";
constexpr const char* kStateFile = "VesmoD_ExitStates.arc";
} // namespace

TVesmoD::TVesmoD(PluginConstructorStruct*) : TFamilyPlugin(kDisplayName) {
  make_app_privacy();
  gDisplayState = new TDisplayState;
  make_settings();
  if (!are_settings_held_off()) {
    load_record(gDisplayState, kStateFolder, kStateFile);
    load_shared_prefs();
  }
  const std::string path = image_path_with("gen_VesmoD");
  make_texts(path);
  StartManager(new TVesmoDCommMan(path));
}

TVesmoD::~TVesmoD() {
  Manager().WaitForWindows();
  EndSettings(save_record(gDisplayState, kStateFolder, kStateFile));
  EndManager();
  delete std::exchange(gDisplayState, nullptr);
  delete_settings_and_texts();
}

bool TVesmoD::Init() {
  if (std::exchange(fHasBegun, true))
    Manager().PostMessage(kMsgOpenMain);
  else if (gDisplayState->fIsOpen)
    Manager().PostMessage(kMsgReopenMain);
  return true;
}

void TVesmoD::Cleanup() {
  for (const uint32 request : {kMsgCloseAbout, kMsgCloseMain}) Manager().PostMessage(request);
}
