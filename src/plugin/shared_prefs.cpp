#include "plugin/shared_prefs.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

constexpr const char* kLanguageField = "LLTF";

/** One of the two files that hold the settings, including fields unknown to this program. */
class TStoredSettings : public koreva::TArchivable {
public:
  TStoredSettings(const TPrefValues& current, bool areOptions) : fAreOptions(areOptions) { fPref.SetValues(current); }

  bool Archive(BMessage* archive) override {
    BMessage own;
    if (!ArchiveOwn(&own)) return false;
    *archive = fStored;
    for (const std::string& field : own.FieldNames()) archive->RemoveName(field.c_str());
    const bool isStored = ArchiveOwn(archive);
    if (!IsLanguageChosen()) archive->RemoveName(kLanguageField);
    return isStored;
  }
  bool Unarchive(const BMessage& archive) override {
    fStored = archive;
    return Take(archive);
  }
  bool Take(const BMessage& changes) {
    fHasLanguage |= changes.HasField(kLanguageField);
    return fAreOptions ? fPref.UnarchiveOptions(changes) : fPref.Unarchive(changes);
  }

private:
  bool ArchiveOwn(BMessage* archive) { return fAreOptions ? fPref.ArchiveOptions(archive) : fPref.Archive(archive); }

  /** The default is not stored: until a language is chosen, the player follows the desktop's. */
  bool IsLanguageChosen() const { return fHasLanguage || fPref.Values()->languageFile != TPrefValues().languageFile; }

  const bool fAreOptions;
  bool fHasLanguage = false;
  TPref fPref;
  BMessage fStored;
};

/** True also when none of the changes belongs into the file. */
bool store(const char* file, bool areOptions, const std::vector<BMessage>& changes, const TPrefValues& current) {
  const auto belongs = [areOptions](const BMessage& change) { return (change.what == kMsgOptions) == areOptions; };
  if (std::ranges::none_of(changes, belongs)) return true;
  BEntry entry;
  if (!koreva::get_entry(file, &entry, koreva::kSettingsDir, "Shared")) return false;
  TStoredSettings record(current, areOptions);
  record.Load(entry); // an unreadable file leaves the current values
  for (const BMessage& change : changes) record.Take(change);
  return record.Save(entry);
}

} // namespace

bool store_shared_prefs(const std::vector<BMessage>& changes, const TPrefValues& current) {
  const bool isStored = store("VesmoShared_Prefs.arc", false, changes, current);
  return store("Vesmo_Options.arc", true, changes, current) && isStored;
}
