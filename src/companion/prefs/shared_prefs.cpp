#include "companion/prefs/shared_prefs.h"

#include "common/koreva.h"
#include "platform/app/message.h"
#include "platform/storage/entry.h"
#include "plugin/pref.h"

namespace {

/** The settings in the file, including fields unknown to this program. */
class TSharedRecord : public TPref {
public:
  bool Archive(BMessage* archive) override {
    BMessage own;
    if (!TPref::Archive(&own)) return false;
    *archive = fStored;
    for (const std::string& field : own.FieldNames()) archive->RemoveName(field.c_str());
    return TPref::Archive(archive);
  }
  bool Unarchive(const BMessage& archive) override {
    fStored = archive;
    return TPref::Unarchive(archive);
  }
  void Take(const BMessage& changes) { TPref::Unarchive(changes); }

private:
  BMessage fStored;
};

} // namespace

bool store_shared_prefs(const std::vector<BMessage>& changes, const TPrefValues& current) {
  BEntry entry;
  if (!koreva::get_entry("VesmoShared_Prefs.arc", &entry, koreva::kSettingsDir, "Shared")) return false;
  TSharedRecord record;
  record.SetValues(current);
  record.Load(entry); // an unreadable file leaves the current values
  for (const BMessage& change : changes) record.Take(change);
  return record.Save(entry);
}
