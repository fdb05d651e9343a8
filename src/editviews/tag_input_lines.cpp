/** The tag input view's commands on whole lines. Each is one step of the history. */

#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "lyrics/line_parts.h"
#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/interface/clipboard.h"
#include "platform/interface/window.h"
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

void TTagInputView::RunLineCommand(TCommandId id) {
  switch (id) {
  case TCommandId::kCut:
    return CutLines();
  case TCommandId::kCopy:
    return CopyLines();
  case TCommandId::kPaste:
    return PasteLines();
  case TCommandId::kSelectAll:
    return SelectAll();
  case TCommandId::kDeleteLines:
    return DeleteLines();
  case TCommandId::kInsertLine:
    return InsertLine();
  case TCommandId::kMoveLinesUp:
  case TCommandId::kMoveLinesDown:
    return MoveLines(id == TCommandId::kMoveLinesDown);
  case TCommandId::kJoinLines:
    return JoinLines();
  case TCommandId::kSplitLine:
    return SplitLineRqtd();
  default:
    return;
  }
}

std::list<std::string> TTagInputView::LinesAt(int32 first, int32 last) const {
  std::list<std::string> lines;
  for (int32 row = first; row <= last; ++row) lines.push_back(Item(row)->Text());
  return lines;
}

TSelectedLines TTagInputView::SelectedLines() const {
  const row_selection& rows = Selection();
  const bool isCurrentAtEnd = rows.current == rows.first || rows.current == rows.last;
  return isCurrentAtEnd ? TSelectedLines(rows.current, rows.Anchor()) : TSelectedLines(rows.first, rows.last);
}

void TTagInputView::SelectLines(const TSelectedLines& lines) {
  SelectRange(lines.anchor, lines.current);
  ScrollToSelection();
}

void TTagInputView::ChangeLines(const TLinesChange& change) {
  if (change.removed == static_cast<int32>(change.lines.size())) {
    int32 row = change.first;
    for (const std::string& line : change.lines) SetText(row++, line);
    BRect changed = ItemFrame(change.first);
    changed.bottom = ItemFrame(row - 1).bottom;
    Invalidate(changed);
    return InvalidateNextTagged(row - 1);
  }
  std::list<std::string> lines;
  GetLines(&lines);
  const auto first = std::next(lines.begin(), change.first);
  lines.insert(lines.erase(first, std::next(first, change.removed)), change.lines.begin(), change.lines.end());
  SetLines(lines);
}

void TTagInputView::EditLines(const TLinesChange& change, const TSelectedLines& selectedAfter) {
  const TSelectedLines before = SelectedLines();
  ChangeLines(change);
  fCorrections.ForgetLines(); // the rows are other lines now
  SelectLines(selectedAfter);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited(change, TEditKind::kOther, before, selectedAfter);
}

bool TTagInputView::IsEmptyDocument() const {
  return CountItems() == 0 || (CountItems() == 1 && Item(0)->Text().empty());
}

void TTagInputView::ReportLines(const char* key, int32 count) {
  Report(gLLT->Text(key) + std::to_string(count));
}

void TTagInputView::CopyLines() {
  const row_selection& rows = Selection();
  if (rows.Count() == 0) return;
  std::string text;
  for (const std::string& line : LinesAt(rows.first, rows.last)) text += line + '\n';
  set_clipboard_text(text);
  ReportLines("StatBarStr_Copied_Lines", rows.Count());
}

void TTagInputView::CutLines() {
  CopyLines();
  DeleteLines();
}

/** In place of an empty document, else below the selected lines. */
void TTagInputView::PasteLines() {
  const clipboard_text pasted = get_clipboard_text(kMostPastedBytes);
  std::list<std::string> lines;
  text_to_lines(pasted.text.c_str(), &lines);
  if (pasted.isTooLong || std::ssize(lines) + CountItems() > kMostLines)
    return Report(gLLT->Text("Err_Paste_Too_Long"));
  if (lines.empty()) return Report(gLLT->Text("StatBarStr_Nothing_To_Paste"));
  const bool isEmpty = IsEmptyDocument();
  const int32 first = isEmpty ? 0 : Selection().last + 1;
  EditLines({first, isEmpty ? CountItems() : 0, lines}, first);
  ReportLines("StatBarStr_Pasted_Lines", static_cast<int32>(lines.size()));
}

/** A document keeps at least one line. */
void TTagInputView::DeleteLines() {
  const row_selection rows = Selection();
  if (rows.Count() == 0 || IsEmptyDocument()) return;
  const int32 left = CountItems() - rows.Count();
  TLinesChange change{rows.first, rows.Count(), {}};
  if (left == 0) change.lines.emplace_back();
  EditLines(change, std::min(rows.first, std::max(left - 1, int32{0})));
  ReportLines("StatBarStr_Deleted_Lines", rows.Count());
}

void TTagInputView::InsertLine() {
  if (CountItems() >= kMostLines) return Report(gLLT->Text("Err_Paste_Too_Long"));
  const int32 row = Selection().last + 1;
  EditLines({row, 0, {std::string()}}, row);
  Report(gLLT->Text("StatBarStr_Inserted_Line") + std::to_string(row + 1));
}

/** Exchanges the selected lines with the one above or below. */
void TTagInputView::MoveLines(bool down) {
  const row_selection& rows = Selection();
  const int32 other = down ? rows.last + 1 : rows.first - 1;
  if (rows.Count() == 0 || !Item(other)) return;
  TLinesChange change{std::min(rows.first, other), rows.Count() + 1, LinesAt(rows.first, rows.last)};
  change.lines.insert(down ? change.lines.begin() : change.lines.end(), Item(other)->Text());
  const TSelectedLines selected = SelectedLines();
  const int32 step = down ? 1 : -1;
  EditLines(change, {selected.current + step, selected.anchor + step});
  Report(gLLT->Text("StatBarStr_Moved_Lines") + std::to_string(Selection().first + 1));
}

/** One line joins the next. */
void TTagInputView::JoinLines() {
  const row_selection& rows = Selection();
  const int32 first = rows.first;
  const int32 last = std::max(rows.last, first + 1);
  if (!Item(first) || !Item(last)) return Report(gLLT->Text("StatBarStr_Nothing_To_Join"));
  EditLines({first, last - first + 1, {joined_lines(LinesAt(first, last))}}, first);
  Report(gLLT->Text("StatBarStr_Joined_Lines") + std::to_string(first + 1));
}

void TTagInputView::SplitLineRqtd() {
  if (SelectedItem() == nullptr || !Window()) return;
  const std::string text = parts_of(SelectedItem()->Text()).text;
  if (!is_valid_utf8(text)) return Report(gLLT->Text("StatBarStr_Cannot_Split"));
  BMessage request(kMsgSplitLine);
  request.AddInt32("Row", CurrentSelection());
  request.AddString("Text", text);
  Window()->PostMessage(&request);
}

void TTagInputView::SplitLine(const BMessage& answer) {
  int32 row = -1;
  std::string text;
  std::string before;
  std::string after;
  const bool isWhole = answer.FindInt32("Row", &row) == B_OK && answer.FindString("Text", &text) == B_OK &&
                       answer.FindString("Before", &before) == B_OK && answer.FindString("After", &after) == B_OK;
  if (!isWhole || !Item(row)) return;
  const TLineParts line = parts_of(Item(row)->Text());
  if (line.text != text) return Report(gLLT->Text("StatBarStr_Line_Has_Changed"));
  EditLines({row, 1, split_line(line.tags, before, after)}, row);
  Report(gLLT->Text("StatBarStr_Split_Line") + std::to_string(row + 1));
}
