#include "editviews/following.h"

#include "platform/app/message.h"
#include "plugin/kept_record.h"

namespace {
/** So long the user who has pressed a key is left alone. */
constexpr bigtime_t kIdleUs = 4000000;
constexpr const char* kFolder = "VesmoE";
constexpr const char* kFile = "VesmoE_View.arc";
} // namespace

TFollowing::TFollowing() {
  if (!are_settings_held_off()) load_record(this, kFolder, kFile);
}

void TFollowing::Toggle() {
  fIsOn = !fIsOn;
  fShownRow = -1;
  save_record(this, kFolder, kFile);
}

std::optional<int32> TFollowing::RowToShow(int32 sungRow, bigtime_t nowUs) {
  if (!fIsOn || sungRow < 0 || sungRow == fShownRow || nowUs - fLastKeyUs < kIdleUs) return {};
  fShownRow = sungRow;
  return sungRow;
}

bool TFollowing::Archive(BMessage* archive) {
  return archive->AddBool("Flow", fIsOn) == B_OK;
}

bool TFollowing::Unarchive(const BMessage& archive) {
  return Read(archive, "Flow", &fIsOn);
}
