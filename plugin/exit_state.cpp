#include "plugin/exit_state.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "plugin/pref.h"

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

namespace {

/** The user's way to start with the defaults, and to leave what is stored as it was. */
bool settings_held_off() {
  constexpr uint32 kAllFour = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
  return (modifiers() & kAllFour) == kAllFour;
}

bool load_record(koreva::TArchivable* record, const char* folder, const char* name) {
  BEntry entry;
  return koreva::get_entry(name, &entry, koreva::kSettingsDir, folder) && record->Load(entry);
}

} // namespace

bool load_global(const char* folder, const char* name) {
  if (settings_held_off()) return false;
  const bool hasState = load_record(gExitState, folder, name);
  const bool hasPref = load_record(gPref, "Shared", "VesmoShared_Prefs.arc");
  return hasState && hasPref;
}

bool save_exit_state(const char* folder, const char* name) {
  BEntry entry;
  return !settings_held_off() && koreva::get_entry(name, &entry, koreva::kSettingsDir, folder) &&
         gExitState->Save(entry);
}
