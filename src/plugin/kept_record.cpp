#include "plugin/kept_record.h"

#include "common/koreva.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "plugin/pref.h"

bool are_settings_held_off() {
  constexpr uint32 kAllFour = B_SHIFT_KEY | B_COMMAND_KEY | B_CONTROL_KEY | B_OPTION_KEY;
  return (modifiers() & kAllFour) == kAllFour;
}

bool load_record(koreva::TArchivable* record, const char* folder, const char* name) {
  BEntry entry;
  return koreva::get_entry(name, &entry, koreva::kSettingsDir, folder) && record->Load(entry);
}

bool save_record(koreva::TArchivable* record, const char* folder, const char* name) {
  BEntry entry;
  return !are_settings_held_off() && koreva::get_entry(name, &entry, koreva::kSettingsDir, folder) &&
         record->Save(entry);
}

namespace {
struct TOptionsRecord : koreva::TArchivable {
  bool Unarchive(const BMessage& archive) override { return gPref->UnarchiveOptions(archive); }
};
} // namespace

bool load_options() {
  TOptionsRecord options;
  load_record(&options, "Shared", "VesmoShared_Files.arc"); // where earlier versions stored those of the page Files
  return load_record(&options, "Shared", "Vesmo_Options.arc");
}

bool load_shared_prefs() {
  return load_record(gPref, "Shared", "VesmoShared_Prefs.arc");
}
