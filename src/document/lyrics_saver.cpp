#include "document/lyrics_saver.h"

#include "common/atomic_replace.h"
#include "common/safety_copy.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/storage/file.h"
#include "platform/support/log.h"

#include <algorithm>
#include <utility>

namespace {

/** More would only fill the screen. */
constexpr size_t kMaxNamed = 30;

/** With blanks between. */
std::string named(const std::vector<std::string>& characters) {
  std::string text;
  for (size_t i = 0; i < std::min(characters.size(), kMaxNamed); ++i) text += (i > 0 ? " " : "") + characters[i];
  return text;
}

std::optional<TFileState> state_after_save(const std::string& path, const std::string& bytes) {
  const BFile file(path.c_str(), B_READ_ONLY);
  if (file.InitCheck() != B_OK) return {};
  return file_state(file.Descriptor(), bytes);
}

/** Where a copy is, or that there is none. */
std::string place_of(const std::string& copy, const char* key) {
  return copy.empty() ? gLLT->Text("Hint_Not_Recovered") : gLLT->Text(key) + ("\n" + copy);
}

} // namespace

void TLyricsSaver::Write(TSavePlan plan) {
  const std::string path = plan.file.FullPath();
  fBackup.clear();
  if (plan.losesTail) {
    fBackup = keep_file_for_recovery(path);
    if (fBackup.empty()) log_error("save", "no backup of " + path + " could be made");
  }
  if (atomic_replace(path, plan.bytes) != B_OK) log_error("save", path + " could not be written");
  fPlan = std::move(plan);
}

bool TLyricsSaver::Verify() {
  const std::optional<TSavePlan> plan = std::exchange(fPlan, {});
  if (!plan) return false;
  const std::string path = plan->file.FullPath();
  const bool isOnDisk = file_holds(path, plan->bytes);
  if (isOnDisk) {
    fDocument->Saved(*plan, state_after_save(path, plan->bytes));
    ReportLosses(*plan);
  } else {
    fDocument->SaveFailed();
    ReportFailure(*plan);
  }
  return isOnDisk;
}

/** Blocks until dismissed: the window may close right after the save and take the message with it. */
void TLyricsSaver::ReportLosses(const TSavePlan& plan) const {
  if (!fBackup.empty()) tell(gLLT->Text("Hint_File_Kept") + ("\n" + fBackup));
  if (!plan.hasNewLosses) return;
  const std::string encoding =
      gLLT->Text(("StatBarSymbol_Encoding_" + std::to_string(static_cast<int32>(plan.form.encoding))).c_str());
  const std::string whole = fDocument->Bytes({TEncoding::kUtf8, plan.form.lineEnd});
  const std::string kept = keep_for_recovery(plan.file.FullPath(), whole);
  tell(gLLT->Text("Err_Outside_Encoding_1") + encoding + gLLT->Text("Err_Outside_Encoding_2") +
       named(plan.lostCharacters) + "\n\n" + place_of(kept, "Hint_Whole_Text_Kept"));
}

void TLyricsSaver::ReportFailure(const TSavePlan& plan) const {
  const std::string path = plan.file.FullPath();
  const std::string kept = keep_for_recovery(path, plan.bytes);
  tell(gLLT->Text("Err_Cannot_Save_Lyrics") + ("\n" + path) + "\n\n" + place_of(kept, "Hint_Recovered"));
}
