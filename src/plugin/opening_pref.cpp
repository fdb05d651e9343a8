#include "plugin/opening_pref.h"

#include "platform/app/message.h"
#include "plugin/kept_record.h"

namespace {
constexpr const char* kFolder = "VesmoE";
constexpr const char* kFile = "VesmoE_Opening.arc";
constexpr const char* kField = "OpSg";
} // namespace

void TOpeningPref::LoadStored() {
  if (!are_settings_held_off()) load_record(this, kFolder, kFile);
}

bool TOpeningPref::Store() {
  return save_record(this, kFolder, kFile);
}

bool TOpeningPref::Archive(BMessage* archive) {
  return archive->AddInt32(kField, static_cast<int32>(fOpening)) == B_OK;
}

bool TOpeningPref::Unarchive(const BMessage& archive) {
  int32 number = static_cast<int32>(fOpening);
  if (!Read(archive, kField, &number)) return false;
  if (number >= 0 && number < kSongOpenings) fOpening = static_cast<TSongOpening>(number);
  return true;
}
