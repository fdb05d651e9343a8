#include "editviews/view_choices.h"

#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "plugin/kept_record.h"
#include "plugin/message_codes.h"

namespace {
constexpr const char* kFolder = "VesmoE";
constexpr const char* kFile = "VesmoE_View.arc";
} // namespace

TViewChoices::TViewChoices() {
  if (!are_settings_held_off()) load_record(this, kFolder, kFile);
}

void TViewChoices::Store() {
  save_record(this, kFolder, kFile);
}

bool TViewChoices::Archive(BMessage* archive) {
  return archive->AddBool("Flow", follows) == B_OK && archive->AddBool("Clok", showsClock) == B_OK &&
         archive->AddBool("Word", timesWords) == B_OK && archive->AddBool("Lane", showsLane) == B_OK &&
         archive->AddBool("Wave", showsWave) == B_OK;
}

bool TViewChoices::Unarchive(const BMessage& archive) {
  const bool isFlowRead = Read(archive, "Flow", &follows);
  const bool isClockRead = Read(archive, "Clok", &showsClock);
  const bool isLaneRead = Read(archive, "Lane", &showsLane);
  const bool isWaveRead = Read(archive, "Wave", &showsWave);
  return Read(archive, "Word", &timesWords) && isFlowRead && isClockRead && isLaneRead && isWaveRead;
}

void report_view_choices(const TViewChoices& choices, BWindow* window) {
  BMessage changed(kMsgViewChoices);
  changed.AddBool("Follows", choices.follows);
  changed.AddBool("Clock", choices.showsClock);
  changed.AddBool("Words", choices.timesWords);
  changed.AddBool("Lane", choices.showsLane);
  changed.AddBool("Wave", choices.showsWave);
  if (window) window->PostMessage(&changed);
}
