#include "editviews/line_commands.h"

#include "editviews/tag_rows.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "lyrics/line_parts.h"
#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/interface/clipboard.h"
#include "platform/interface/list_view.h"
#include "platform/support/utf8.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {

bool is_valid_utf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character next = first_character(text);
    if (!next.IsValid()) return false;
    text.remove_prefix(next.length);
  }
  return true;
}
} // namespace

bool TLineCommands::Run(TCommandId id) {
  using enum TCommandId;
  const row_selection& rows = fRows->List().Selection();
  switch (id) {
  case kCut:
    return CutLines(), true;
  case kCopy:
    return CopyLines(), true;
  case kPaste:
    return PasteLines(), true;
  case kSelectAll:
    return fRows->List().SelectAll(), true;
  case kDeleteLines:
    return DeleteLines(), true;
  case kInsertLine:
    return InsertLine(), true;
  case kMoveLinesUp:
  case kMoveLinesDown:
    return MoveLines(id == kMoveLinesDown), true;
  case kJoinLines:
    return JoinLines(), true;
  case kSplitLine:
    return SplitLineRqtd(), true;
  case kShiftFromHere:
    return ShiftRqtd(rows.current, INT32_MAX), true;
  case kShiftSelected:
    return ShiftRqtd(rows.first, rows.Count()), true;
  default:
    return false;
  }
}

void TLineCommands::CopyLines() {
  const row_selection& rows = fRows->List().Selection();
  if (rows.Count() == 0) return;
  std::string text;
  for (const std::string& line : fRows->LinesAt(rows.first, rows.last)) text += line + '\n';
  set_clipboard_text(text);
  fRows->Report("StatBarStr_Copied_Lines", rows.Count());
}

void TLineCommands::CutLines() {
  CopyLines();
  DeleteLines();
}

/** In place of an empty document, else below the selected lines. */
void TLineCommands::PasteLines() {
  const clipboard_text pasted = get_clipboard_text(kMostPastedBytes);
  std::list<std::string> lines;
  text_to_lines(pasted.text.c_str(), &lines);
  if (pasted.isTooLong || std::ssize(lines) + fRows->Count() > kMostLines)
    return fRows->Report(gLLT->Text("Err_Paste_Too_Long"));
  if (lines.empty()) return fRows->Report(gLLT->Text("StatBarStr_Nothing_To_Paste"));
  const bool isEmpty = fRows->IsEmptyDocument();
  const int32 first = isEmpty ? 0 : fRows->List().Selection().last + 1;
  fRows->Edit({first, isEmpty ? fRows->Count() : 0, lines}, first);
  fRows->Report("StatBarStr_Pasted_Lines", static_cast<int32>(lines.size()));
}

/** A document keeps at least one line. */
void TLineCommands::DeleteLines() {
  const row_selection rows = fRows->List().Selection();
  if (rows.Count() == 0 || fRows->IsEmptyDocument()) return;
  const int32 left = fRows->Count() - rows.Count();
  TLinesChange change{rows.first, rows.Count(), {}};
  if (left == 0) change.lines.emplace_back();
  fRows->Edit(change, std::min(rows.first, std::max(left - 1, int32{0})));
  fRows->Report("StatBarStr_Deleted_Lines", rows.Count());
}

void TLineCommands::InsertLine() {
  if (fRows->Count() >= kMostLines) return fRows->Report(gLLT->Text("Err_Paste_Too_Long"));
  const int32 row = fRows->List().Selection().last + 1;
  fRows->Edit({row, 0, {std::string()}}, row);
  fRows->Report("StatBarStr_Inserted_Line", row + 1);
}

/** Exchanges the selected lines with the one above or below. */
void TLineCommands::MoveLines(bool down) {
  const row_selection& rows = fRows->List().Selection();
  const int32 other = down ? rows.last + 1 : rows.first - 1;
  if (rows.Count() == 0 || !fRows->Has(other)) return;
  TLinesChange change{std::min(rows.first, other), rows.Count() + 1, fRows->LinesAt(rows.first, rows.last)};
  change.lines.insert(down ? change.lines.begin() : change.lines.end(), fRows->TextOf(other));
  const TSelectedLines selected = fRows->Selected();
  const int32 step = down ? 1 : -1;
  fRows->Edit(change, {selected.current + step, selected.anchor + step});
  fRows->Report("StatBarStr_Moved_Lines", fRows->List().Selection().first + 1);
}

/** One line joins the next. */
void TLineCommands::JoinLines() {
  const row_selection& rows = fRows->List().Selection();
  const int32 first = rows.first;
  const int32 last = std::max(rows.last, first + 1);
  if (!fRows->Has(first) || !fRows->Has(last)) return fRows->Report(gLLT->Text("StatBarStr_Nothing_To_Join"));
  fRows->Edit({first, last - first + 1, {joined_lines(fRows->LinesAt(first, last))}}, first);
  fRows->Report("StatBarStr_Joined_Lines", first + 1);
}

void TLineCommands::SplitLineRqtd() {
  const int32 row = fRows->Current();
  if (!fRows->Has(row)) return;
  const std::string text = parts_of(fRows->TextOf(row)).text;
  if (!is_valid_utf8(text)) return fRows->Report(gLLT->Text("StatBarStr_Cannot_Split"));
  BMessage request(kMsgSplitLine);
  request.AddInt32("Row", row);
  request.AddString("Text", text);
  fRows->Post(std::move(request));
}

void TLineCommands::SplitLine(const BMessage& answer) {
  int32 row = -1;
  std::string text;
  std::string before;
  std::string after;
  const bool isWhole = answer.FindInt32("Row", &row) == B_OK && answer.FindString("Text", &text) == B_OK &&
                       answer.FindString("Before", &before) == B_OK && answer.FindString("After", &after) == B_OK;
  if (!isWhole || !fRows->Has(row)) return;
  const TLineParts line = parts_of(fRows->TextOf(row));
  if (line.text != text) return fRows->Report(gLLT->Text("StatBarStr_Line_Has_Changed"));
  fRows->Edit({row, 1, split_line(line.tags, before, after)}, row);
  fRows->Report("StatBarStr_Split_Line", row + 1);
}

/** The window adds what the view does not know, and asks for the amount. */
void TLineCommands::ShiftRqtd(int32 firstRow, int32 count) {
  if (!fRows->Has(firstRow)) return;
  BMessage shift(kMsgFineTimeTag);
  shift.AddInt32("First", firstRow);
  shift.AddInt32("Count", count);
  fRows->Post(std::move(shift));
}
