/** Commands on every line of the document. */

#include "document/edit_session.h"
#include "document/editor_view.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/bulk_tags.h"
#include "platform/app/message.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr long kMaxShiftMs = 2147483647;

std::string quoted(const char* text) {
  return "\"" + std::string(text) + "\"";
}

} // namespace

void TVesmoEView::FineTimeTagRqtd(const BMessage& message) {
  std::string typed;
  if (message.FindString("_SmplIptData", &typed) != B_OK) return;
  const long offsetMs = std::clamp(std::strtol(typed.c_str(), nullptr, 10), -kMaxShiftMs, kMaxShiftMs);
  fSession->Rewrite([offsetMs](auto* lines) { shift_time_tags(lines, offsetMs); });
  const std::string report = gLLT->Text("StatBarStr_Fined_Time_Tag") + std::to_string(offsetMs) + " [ms]";
  SetStatBarStr(report.c_str());
}

void TVesmoEView::MItemCvtTag(const BMessage& message) {
  bool toExtended = false;
  if (message.FindBool("CvtTagS2E", &toExtended) != B_OK) return;
  const char* const from = gLLT->Text(toExtended ? "Std_Time_Tag" : "Ext_Time_Tag");
  const char* const to = gLLT->Text(toExtended ? "Ext_Time_Tag" : "Std_Time_Tag");
  if (!ask_no_yes(gLLT->Text("Ask_Cvt_Tag_1") + quoted(from) + gLLT->Text("Ask_Cvt_Tag_2") + quoted(to) +
                  gLLT->Text("Ask_Cvt_Tag_3"))) {
    return;
  }
  fSession->Rewrite([toExtended](auto* lines) { convert_time_tags(lines, toExtended); });
  const std::string report = std::string(gLLT->Text("StatBarStr_Cvted_Tag_1")) + from +
                             gLLT->Text("StatBarStr_Cvted_Tag_2") + to + gLLT->Text("StatBarStr_Cvted_Tag_3");
  SetStatBarStr(report.c_str());
}

void TVesmoEView::MItemDelAllTimeTagClicked() {
  if (!ask_no_yes(gLLT->Text("Ask_Del_All_Time_Tag"))) return;
  fSession->Rewrite(delete_time_tags);
  SetStatBarStr(gLLT->Text("StatBarStr_Deled_All_Time_Tag"));
}
