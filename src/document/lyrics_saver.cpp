#include "document/lyrics_saver.h"

#include "common/atomic_replace.h"
#include "common/safety_copy.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "platform/storage/file.h"
#include "platform/support/log.h"

#include <utility>

namespace {

std::optional<TFileState> state_after_save(const std::string& path, const std::string& bytes) {
  const BFile file(path.c_str(), B_READ_ONLY);
  if (file.InitCheck() != B_OK) return {};
  return file_state(file.Descriptor(), bytes);
}

} // namespace

void TLyricsSaver::Write(TSavePlan plan) {
  const std::string path = plan.file.FullPath();
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
  } else {
    fDocument->SaveFailed();
    tell_not_saved(*fDocument, *plan, "");
  }
  return isOnDisk;
}

void tell_not_saved(const TDocument& document, const TSavePlan& plan, const std::string& reason) {
  const std::string path = plan.file.FullPath();
  // With substitutes in place of characters, the copy would not be the text.
  const bool isLossy = !plan.lostCharacters.empty();
  const std::string copy = keep_for_recovery(
      path, isLossy ? document.Bytes({TEncoding::kUtf8, plan.form.lineEnd, plan.form.dialect}) : plan.bytes);
  const std::string place =
      copy.empty() ? gLLT->Text("Hint_Not_Recovered") : gLLT->Text("Hint_Recovered") + ("\n" + copy);
  tell(gLLT->Text("Err_Cannot_Save_Lyrics") + ("\n" + path) + "\n\n" + (reason.empty() ? "" : reason + "\n\n") + place);
}
