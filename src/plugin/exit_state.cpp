#include "plugin/exit_state.h"

#include "platform/app/message.h"
#include "plugin/kept_record.h"

TExitState* gExitState = nullptr;

bool TExitState::Archive(BMessage* archive) {
  return archive->AddInt32("Mode", fMode) == B_OK && archive->AddString("_FPF", fPanelFolder) == B_OK &&
         archive->AddRect("_WFr", fWindowFrame) == B_OK;
}

bool TExitState::Unarchive(const BMessage& archive) {
  bool all = Read(archive, "Mode", &fMode);
  all &= Read(archive, "_Ver", &fVersion);
  all &= Read(archive, "_FPF", &fPanelFolder);
  all &= Read(archive, "_WFr", &fWindowFrame);
  return all;
}

bool load_global(const char* folder, const char* name) {
  if (are_settings_held_off()) return false;
  const bool hasState = load_record(gExitState, folder, name);
  const bool hasPref = load_shared_prefs();
  return hasState && hasPref;
}

bool save_exit_state(const char* folder, const char* name) {
  return save_record(gExitState, folder, name);
}
