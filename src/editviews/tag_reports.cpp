#include "editviews/tag_reports.h"

#include "language/llt.h"

#include <cstdlib>

namespace {

/** Two texts with a number between them. */
std::string numbered(const char* before, long number, const char* after) {
  return gLLT->Text(before) + std::to_string(number) + gLLT->Text(after);
}

} // namespace

std::string stamp_report(int32 row, const TStampedLine& stamped) {
  const std::string line = std::to_string(row + 1);
  if (!stamped.movedByMs) return gLLT->Text("StatBarStr_Inserted_New_Tag") + line;
  return gLLT->Text("StatBarStr_Replaced_Tag_1") + line +
         numbered("StatBarStr_Replaced_Tag_2", *stamped.movedByMs, "StatBarStr_Replaced_Tag_3");
}

std::string nudge_report(const TNudgedLine& nudged) {
  return gLLT->Text("StatBarStr_Fined_One_Time_Tag") + std::to_string(nudged.stepMs) + "[ms]";
}

std::string removal_report(int32 row) {
  return gLLT->Text("StatBarStr_Removed_Tag") + std::to_string(row + 1);
}

std::string lateness_report(int32 latenessMs) {
  const int32 size = std::abs(latenessMs);
  return latenessMs > 0 ? numbered("StatBarStr_Stamps_Late_1", size, "StatBarStr_Stamps_Late_2")
                        : numbered("StatBarStr_Stamps_Early_1", size, "StatBarStr_Stamps_Early_2");
}
