#include "document/bulk_commands.h"

#include "document/edit_session.h"
#include "editviews/tag_input_view.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/bulk_preview.h"
#include "lyrics/bulk_tags.h"
#include "lyrics/document.h"
#include "lyrics/word_lines.h"
#include "platform/app/message.h"
#include "platform/support/cut_text.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace {

using TBulkChange = std::function<void(std::list<std::string>*)>;

constexpr long kMaxShiftMs = 2147483647;

/** More lines would only fill the screen. */
constexpr size_t kMostShown = 5;
/** Of a long line, what tells it from the others. */
constexpr size_t kMostOfLine = 60;

std::string quoted(const char* text) {
  return "\"" + std::string(text) + "\"";
}

std::string shortened(const std::string& line) {
  const std::string_view start = cut_text(line, kMostOfLine);
  return std::string(start) + (start.size() < line.size() ? "…" : "");
}

/** A paragraph for the question: how many lines the command changes, and the first ones before and after. */
std::string what_changes(const std::vector<std::string>& before, const TBulkChange& change) {
  std::list<std::string> after(before.begin(), before.end());
  change(&after);
  const TBulkPreview preview = bulk_preview(before, after, kMostShown);
  std::string text = "\n\n" + (gLLT->Text("Hint_Lines_Change") + std::to_string(preview.changed));
  if (preview.emptied > 0) text += "\n" + (gLLT->Text("Hint_Lines_Emptied") + std::to_string(preview.emptied));
  for (const TBulkPreview::TLine& line : preview.first)
    text += "\n" + std::to_string(line.number) + ":  " + shortened(line.before) + "  →  " + shortened(line.after);
  return preview.changed > preview.first.size() ? text + "\n…" : text;
}

/** A paragraph for the question: the times within the lines change as well. */
std::string words_too(bool withWords) {
  return withWords ? std::string("\n\n") + gLLT->Text("Hint_Words_Too") : std::string();
}

/** Some lines of a document; bounded to those that there are. */
struct TLineRange {
  size_t first = 0;
  size_t end = SIZE_MAX; // the first line behind

  template <typename Lines>
  auto Begin(Lines& lines) const {
    return std::next(lines.begin(), static_cast<ptrdiff_t>(std::min(first, lines.size())));
  }
  template <typename Lines>
  auto End(Lines& lines) const {
    return std::next(lines.begin(),
                     static_cast<ptrdiff_t>(std::clamp(end, std::min(first, lines.size()), lines.size())));
  }
};

/** All lines if the message names none. */
TLineRange range_in(const BMessage& message) {
  int32 first = 0;
  int32 count = 0;
  if (message.FindInt32("First", &first) != B_OK || message.FindInt32("Count", &count) != B_OK) return {};
  const auto begin = static_cast<size_t>(std::max(first, int32{0}));
  return {begin, begin + static_cast<size_t>(std::max(count, int32{0}))};
}

/** Says which lines, up to the amount. */
std::string shift_report(const BMessage& message) {
  int32 first = 0;
  int32 count = 0;
  if (message.FindInt32("First", &first) != B_OK || message.FindInt32("Count", &count) != B_OK)
    return gLLT->Text("StatBarStr_Fined_Time_Tag");
  const std::string line = std::to_string(first + 1);
  if (count == INT32_MAX)
    return gLLT->Text("StatBarStr_Shifted_From_1") + line + gLLT->Text("StatBarStr_Shifted_From_2");
  return gLLT->Text("StatBarStr_Shifted_Lines_1") + line + "–" + std::to_string(int64{first} + count) +
         gLLT->Text("StatBarStr_Shifted_Lines_2");
}

void shift_range(std::list<std::string>* lines, const TLineRange& range, long offsetMs, bool withWords) {
  std::list<std::string> shifted;
  const auto end = range.End(*lines);
  shifted.splice(shifted.end(), *lines, range.Begin(*lines), end);
  withWords ? shift_tags_and_words(&shifted, offsetMs) : shift_time_tags(&shifted, offsetMs);
  lines->splice(end, shifted);
}

} // namespace

bool TBulkCommands::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgShiftTags:
    FineTimeTagRqtd(message);
    return true;
  case kMsgConvertTags:
    MItemCvtTag(message);
    return true;
  case kMsgDeleteTags:
    MItemDelAllTimeTagClicked();
    return true;
  default:
    return false;
  }
}

void TBulkCommands::FineTimeTagRqtd(const BMessage& message) {
  std::string typed;
  if (message.FindString("_SmplIptData", &typed) != B_OK) return;
  const int32 document = fDocument->Number();
  if (message.GetInt32("Document", document) != document)
    return fSession->Report(gLLT->Text("StatBarStr_Shift_Of_Another"));
  const long offsetMs = std::clamp(std::strtol(typed.c_str(), nullptr, 10), -kMaxShiftMs, kMaxShiftMs);
  const TLineRange range = range_in(message);
  const bool withWords = fSession->TagInput().IsWordByWord();
  const TBulkChange shift = [&](auto* lines) { shift_range(lines, range, offsetMs, withWords); };
  fSession->Active().FlushEdits();
  const std::vector<std::string>& all = fDocument->Lines();
  const size_t atZero = count_tags_piled_at_zero({range.Begin(all), range.End(all)}, offsetMs);
  const auto question = [&] {
    return gLLT->Text("Ask_Shift_Past_Zero") + ("\n\n" + (gLLT->Text("Hint_Tags_At_Zero") + std::to_string(atZero))) +
           words_too(withWords) + what_changes(fDocument->Lines(), shift);
  };
  if (atZero > 0 && !ask_no_yes(question())) return;
  fSession->Rewrite(shift);
  const std::string report = shift_report(message) + std::to_string(offsetMs) + " [ms]";
  fSession->Report(report);
}

void TBulkCommands::MItemCvtTag(const BMessage& message) {
  bool toExtended = false;
  if (message.FindBool("CvtTagS2E", &toExtended) != B_OK) return;
  const char* const from = gLLT->Text(toExtended ? "Std_Time_Tag" : "Ext_Time_Tag");
  const char* const to = gLLT->Text(toExtended ? "Ext_Time_Tag" : "Std_Time_Tag");
  const bool withWords = fSession->TagInput().IsWordByWord();
  const TBulkChange convert = [=](auto* lines) {
    withWords ? convert_tags_and_words(lines, toExtended) : convert_time_tags(lines, toExtended);
  };
  fSession->Active().FlushEdits();
  if (!ask_no_yes(gLLT->Text("Ask_Cvt_Tag_1") + quoted(from) + gLLT->Text("Ask_Cvt_Tag_2") + quoted(to) +
                  gLLT->Text("Ask_Cvt_Tag_3") + words_too(withWords) + what_changes(fDocument->Lines(), convert))) {
    return;
  }
  fSession->Rewrite(convert);
  const std::string report = std::string(gLLT->Text("StatBarStr_Cvted_Tag_1")) + from +
                             gLLT->Text("StatBarStr_Cvted_Tag_2") + to + gLLT->Text("StatBarStr_Cvted_Tag_3");
  fSession->Report(report);
}

void TBulkCommands::MItemDelAllTimeTagClicked() {
  fSession->Active().FlushEdits();
  const bool withWords = fSession->TagInput().IsWordByWord();
  const TBulkChange deletion = withWords ? delete_tags_and_words : delete_time_tags;
  if (!ask_no_yes(gLLT->Text("Ask_Del_All_Time_Tag") + words_too(withWords) +
                  what_changes(fDocument->Lines(), deletion)))
    return;
  fSession->Rewrite(deletion);
  fSession->Report(gLLT->Text("StatBarStr_Deled_All_Time_Tag"));
}
