#include "companion/vesmo_d.h"

#include "companion/display_state.h"
#include "companion/vesmo_d_comm_man.h"
#include "platform/app/message.h"
#include "plugin/family_globals.h"
#include "plugin/kept_record.h"
#include "plugin/plugin_image.h"

#include <string>
#include <utility>

namespace {
constexpr const char* kStateFolder = "VesmoD";
constexpr const char* kStateFile = "VesmoD_ExitStates.arc";
} // namespace

TVesmoD::TVesmoD(PluginConstructorStruct*)
    : fNameText(heap_copy(kDisplayName)), fInfoText(heap_copy(std::string(kDisplayName) + "  " + kCredit)) {
  fName = fNameText.get();
  fInfo = fInfoText.get();
  gDisplayState = new TDisplayState;
  make_settings();
  load_record(gDisplayState, kStateFolder, kStateFile);
  load_shared_prefs();
  const std::string path = image_path_with("gen_VesmoD");
  make_texts(path);
  fCommMan = new TVesmoDCommMan(path);
  fCommMan->Run();
}

TVesmoD::~TVesmoD() {
  fCommMan->WaitForWindows();
  save_record(gDisplayState, kStateFolder, kStateFile);
  if (fCommMan->Lock()) fCommMan->Quit();
  delete std::exchange(gDisplayState, nullptr);
  delete_settings_and_texts();
}

bool TVesmoD::Init() {
  if (std::exchange(fHasBegun, true))
    fCommMan->PostMessage(kMsgOpenMain);
  else if (gDisplayState->fIsOpen)
    fCommMan->PostMessage(kMsgReopenMain);
  return true;
}

void TVesmoD::Cleanup() {
  for (const uint32 request : {kMsgCloseAbout, kMsgCloseMain}) fCommMan->PostMessage(request);
}

bool TVesmoD::About(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPrepareAbout);
  return true;
}

bool TVesmoD::Prefs(bool query) {
  if (!query) fCommMan->PostMessage(kMsgPreparePref);
  return true;
}
