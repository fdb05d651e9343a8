#include "document/save_guard.h"

#include "common/safety_copy.h"
#include "document/encoding_name.h"
#include "document/file_watch.h"
#include "document/lyrics_saver.h"
#include "interapp/questions.h"
#include "language/llt.h"

#include <algorithm>

namespace {

/** What the user decides before a save. */
enum class TSaveAnswer { kCancel, kAnyway, kAsUtf8 };

/** More would only fill the screen; the rest is counted. */
constexpr size_t kMostNamed = 30;

std::string named(const std::vector<std::string>& characters) {
  std::string text;
  for (size_t i = 0; i < std::min(characters.size(), kMostNamed); ++i) text += (i > 0 ? " " : "") + characters[i];
  if (characters.size() > kMostNamed)
    text += gLLT->Text("Loss_More_1") + std::to_string(characters.size() - kMostNamed) + gLLT->Text("Loss_More_2");
  return text;
}

std::string list_of_losses(const TSavePlan& plan) {
  std::string list;
  const auto add = [&list](const std::string& loss) { list += "\n• " + loss; };
  if (!plan.newLostCharacters.empty()) add(gLLT->Text("Loss_Characters") + named(plan.newLostCharacters));
  if (plan.unread.tailBytes > 0) add(gLLT->Text("Loss_Tail") + std::to_string(plan.unread.tailBytes));
  if (plan.unread.isCut) add(gLLT->Text("Loss_Cut"));
  if (plan.unread.hasBrokenBytes) add(gLLT->Text("Loss_Broken"));
  if (plan.unread.hasOddBytes) add(gLLT->Text("Loss_Odd"));
  return list;
}

bool is_lossy(const TSavePlan& plan) {
  return !plan.newLostCharacters.empty() || plan.unread.Any();
}

/** What another program has changed, and what the encoding or the reading loses. */
std::string question_about(const TSavePlan& plan) {
  std::string text;
  if (plan.overwrites) text = "\"" + plan.file.name + "\"" + gLLT->Text("Ask_Overwrite");
  if (!is_lossy(plan)) return text;
  if (!text.empty()) text += "\n\n";
  text += gLLT->Text("Ask_Lossy_Save_1") + encoding_name(plan.form.encoding) + gLLT->Text("Ask_Lossy_Save_2") +
          list_of_losses(plan);
  if (plan.unread.Any() && !plan.overwrites) text += "\n\n" + std::string(gLLT->Text("Hint_Version_Kept"));
  return text;
}

TSaveAnswer ask_about(const TSavePlan& plan) {
  const std::string question = question_about(plan);
  const auto anyway = text_button("Button_Save_Anyway", 'A');
  const long answer = plan.newLostCharacters.empty()
                          ? ask(question, {cancel_button(true), anyway})
                          : ask(question, {cancel_button(), anyway, text_button("Button_Save_UTF8", 'U')});
  return answer == 1 ? TSaveAnswer::kAnyway : answer == 2 ? TSaveAnswer::kAsUtf8 : TSaveAnswer::kCancel;
}

} // namespace

bool TSaveGuard::Allow(TLyricsInfo* info, TDialect dialect) {
  fReport.clear();
  const TSaveTarget target = fWatch->TargetNow(info->File);
  const TLyricsForm form{any_encoding_of(info->Encoding), line_end_of(info->CRType), dialect};
  const TSavePlan plan = fDocument->PlanSave(info->File, form, target);
  if (target.now.kind == TFileKind::kNoAnswer) {
    tell_not_saved(*fDocument, plan, gLLT->Text("Hint_Disk_Silent"));
    return false;
  }
  if (!Ask(info, plan)) return false;
  if ((plan.overwrites || plan.unread.Any()) && !KeepReplaced(info->File.FullPath())) return false;
  if (static_cast<TEncoding>(info->Encoding) == plan.form.encoding && !plan.newLostCharacters.empty()) KeepWhole(plan);
  return true;
}

bool TSaveGuard::Ask(TLyricsInfo* info, const TSavePlan& plan) const {
  if (!plan.overwrites && !is_lossy(plan)) return true;
  const TSaveAnswer answer = ask_about(plan);
  if (answer == TSaveAnswer::kAsUtf8) info->Encoding = static_cast<long>(TEncoding::kUtf8);
  return answer != TSaveAnswer::kCancel;
}

/** Nothing is replaced that could not be copied. */
bool TSaveGuard::KeepReplaced(const std::string& path) {
  const std::string copy = keep_file_for_recovery(path);
  if (copy.empty()) {
    tell(gLLT->Text("Err_Cannot_Save_Lyrics") + ("\n" + path) + "\n\n" + gLLT->Text("Err_Version_Not_Kept"));
    return false;
  }
  fReport = gLLT->Text("StatBarStr_Version_Kept") + copy;
  return true;
}

/** The text that the encoding cannot hold. The user has agreed to the loss: a failure ends nothing. */
void TSaveGuard::KeepWhole(const TSavePlan& plan) {
  const std::string copy = keep_for_recovery(
      plan.file.FullPath(), fDocument->Bytes({TEncoding::kUtf8, plan.form.lineEnd, plan.form.dialect}));
  if (!copy.empty()) fReport += gLLT->Text("StatBarStr_Whole_Kept") + copy;
}
