#include "player/app/choice_saver.h"

#include "common/archivable.h"
#include "common/koreva.h"
#include "platform/storage/entry.h"
#include "player/model/player_messages.h"

namespace {

constexpr bigtime_t kSaveDelayUs = 1000000;
constexpr const char* kFolder = "Sonivo";
constexpr const char* kName = "Sonivo_Choices.arc";

struct TChoicesRecord : koreva::TArchivable {
  bool Archive(BMessage* archive) override { return archive_choices(choices, archive); }
  bool Unarchive(const BMessage& archive) override { return take_choices(archive, &choices); }
  TPlayerChoices choices;
};

} // namespace

TPlayerChoices TChoiceSaver::Load() {
  fThread.Check();
  TChoicesRecord record;
  BEntry entry;
  if (koreva::get_entry(kName, &entry, koreva::kSettingsDir, kFolder)) record.Load(entry);
  record.choices.modes.stopsAfterSong = false;
  fSaved = fNoted = record.choices;
  return fNoted;
}

void TChoiceSaver::Note(const TPlayerChoices& choices) {
  fThread.Check();
  fNoted = choices;
  fNoted.modes.stopsAfterSong = false;
  if (fNoted != fSaved) fSaveTimer.StartOnce(kMsgKeepChoices, kSaveDelayUs);
}

bool TChoiceSaver::Save() {
  fThread.Check();
  if (fNoted == fSaved) return true;
  fSaved = fNoted;
  TChoicesRecord record;
  record.choices = fNoted;
  BEntry entry;
  return koreva::get_entry(kName, &entry, koreva::kSettingsDir, kFolder) && record.Save(entry);
}
