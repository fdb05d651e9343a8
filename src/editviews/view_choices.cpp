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
         archive->AddBool("Wave", showsWave) == B_OK && archive->AddBool("Clck", clicks) == B_OK &&
         archive->AddBool("CtIn", countsIn) == B_OK;
}

bool TViewChoices::Unarchive(const BMessage& archive) {
  bool all = Read(archive, "Flow", &follows);
  all &= Read(archive, "Clok", &showsClock);
  all &= Read(archive, "Word", &timesWords);
  all &= Read(archive, "Lane", &showsLane);
  all &= Read(archive, "Wave", &showsWave);
  all &= Read(archive, "Clck", &clicks);
  all &= Read(archive, "CtIn", &countsIn);
  return all;
}

void report_view_choices(const TViewChoices& choices, BWindow* window) {
  BMessage changed(kMsgViewChoices);
  changed.AddBool("Follows", choices.follows);
  changed.AddBool("Clock", choices.showsClock);
  changed.AddBool("Words", choices.timesWords);
  changed.AddBool("Lane", choices.showsLane);
  changed.AddBool("Wave", choices.showsWave);
  changed.AddBool("Clicks", choices.clicks);
  changed.AddBool("CountsIn", choices.countsIn);
  if (window) window->PostMessage(&changed);
}
