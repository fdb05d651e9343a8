#include "companion/vesmo_d.h"

#include "commands/key_bindings.h"
#include "companion/lyrics_window_state.h"
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

TVesmoD::TVesmoD(PluginConstructorStruct*) : TFamilyPlugin(kCompanionName) {
  make_app_privacy();
  gLyricsWindowState = new TLyricsWindowState;
  make_settings();
  if (!are_settings_held_off()) {
    load_record(gLyricsWindowState, kStateFolder, kStateFile);
    load_shared_prefs();
    load_options();
    load_key_bindings();
  }
  const std::string path = image_path_with("gen_VesmoD");
  make_texts(path);
  StartManager(new TVesmoDCommMan(path));
}

TVesmoD::~TVesmoD() {
  Manager().WaitForWindows();
  EndSettings(save_record(gLyricsWindowState, kStateFolder, kStateFile));
  EndManager();
  delete std::exchange(gLyricsWindowState, nullptr);
  delete_settings_and_texts();
}

bool TVesmoD::Init() {
  if (std::exchange(fHasBegun, true))
    Manager().PostMessage(kMsgOpenMain);
  else if (gLyricsWindowState->fIsOpen)
    Manager().PostMessage(kMsgReopenMain);
  return true;
}

void TVesmoD::Cleanup() {
  for (const uint32 request : {kMsgCloseAbout, kMsgCloseMain}) Manager().PostMessage(request);
}
