#include "editviews/tag_rows.h"

#include "editviews/tag_input_item.h"
#include "editviews/tracked_edit_view.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/list_view.h"
#include "platform/interface/window.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <iterator>
#include <vector>

TTagRows::TTagRows(BListView* list, const TTrackedEditView* view, TCallbacks callbacks)
    : fList(list), fView(view), fCallbacks(std::move(callbacks)) {}

void TTagRows::Empty() {
  std::vector<BListItem*> items;
  items.reserve(static_cast<size_t>(Count()));
  for (int32 i = 0; i < Count(); ++i) items.push_back(fList->ItemAt(i));
  fList->MakeEmpty();
  fTimes.Clear();
  fCallbacks.emptied();
  for (const BListItem* item : items) delete item;
}

void TTagRows::SetLines(const std::list<std::string>& lines) {
  Empty();
  std::vector<BListItem*> items;
  items.reserve(lines.size());
  for (const std::string& line : lines) {
    items.push_back(new TTagInputItem(line));
    fTimes.Append(line);
  }
  fList->AddList(items);
  ShowPlaceholder();
}

void TTagRows::GetLines(std::list<std::string>* lines) const {
  for (int32 i = 0; i < Count(); ++i) lines->push_back(Item(i)->Text());
}

bool TTagRows::IsEmptyDocument() const {
  return Count() == 0 || (Count() == 1 && Item(0)->Text().empty());
}

void TTagRows::ShowPlaceholder() {
  fList->SetPlaceholder(IsEmptyDocument() ? gLLT->Text("Hint_Empty_Document") : "", gPref->Values()->lyrics);
}

int32 TTagRows::Count() const {
  return fList->CountItems();
}

TTagInputItem* TTagRows::Item(int32 row) const {
  return static_cast<TTagInputItem*>(fList->ItemAt(row));
}

std::string TTagRows::TextOf(int32 row) const {
  const TTagInputItem* const item = Item(row);
  return item ? item->Text() : std::string();
}

std::list<std::string> TTagRows::LinesAt(int32 first, int32 last) const {
  std::list<std::string> lines;
  for (int32 row = first; row <= last; ++row) lines.push_back(Item(row)->Text());
  return lines;
}

int32 TTagRows::Current() const {
  return fList->CurrentSelection();
}

TSelectedLines TTagRows::Selected() const {
  const row_selection& rows = fList->Selection();
  const bool isCurrentAtEnd = rows.current == rows.first || rows.current == rows.last;
  return isCurrentAtEnd ? TSelectedLines(rows.current, rows.Anchor()) : TSelectedLines(rows.first, rows.last);
}

void TTagRows::Select(const TSelectedLines& lines) {
  fList->SelectRange(lines.anchor, lines.current);
  fList->ScrollToSelection();
}

void TTagRows::GoTo(int32 row) {
  fList->Select(row);
  fList->ScrollToSelection();
}

void TTagRows::SetText(int32 row, const std::string& text) {
  Item(row)->SetText(text);
  fTimes.Change(row, text);
  if (Count() == 1) ShowPlaceholder();
}

void TTagRows::InvalidateNextTagged(int32 row) {
  for (int32 below = row + 1; below < fTimes.CountRows(); ++below)
    if (fTimes.OnlyTagOf(below)) return fList->InvalidateItem(below);
}

void TTagRows::ChangeRow(int32 row, const std::string& text, TEditKind kind) {
  SetText(row, text);
  fList->InvalidateItem(row);
  InvalidateNextTagged(row);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited({row, 1, {text}}, kind, row, Current());
}

void TTagRows::Change(const TLinesChange& change) {
  if (change.removed == static_cast<int32>(change.lines.size())) {
    int32 row = change.first;
    for (const std::string& line : change.lines) SetText(row++, line);
    BRect changed = fList->ItemFrame(change.first);
    changed.bottom = fList->ItemFrame(row - 1).bottom;
    fList->Invalidate(changed);
    return InvalidateNextTagged(row - 1);
  }
  std::list<std::string> lines;
  GetLines(&lines);
  const auto first = std::next(lines.begin(), change.first);
  lines.insert(lines.erase(first, std::next(first, change.removed)), change.lines.begin(), change.lines.end());
  SetLines(lines);
}

void TTagRows::Edit(const TLinesChange& change, const TSelectedLines& selectedAfter) {
  const TSelectedLines before = Selected();
  Change(change);
  fCallbacks.renumbered();
  Select(selectedAfter);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited(change, TEditKind::kOther, before, selectedAfter);
}

void TTagRows::Retime(const TLinesChange& change) {
  const TSelectedLines selected = Selected();
  Change(change);
  SetModified(true);
  if (Listener()) Listener()->LinesEdited(change, TEditKind::kOther, selected, selected);
}

TStampForms TTagRows::Forms() const {
  return {fForm, Listener() ? Listener()->WordForm() : TWordForm::kFamily};
}

TEditListener* TTagRows::Listener() const {
  return fView->Listener();
}

void TTagRows::RetakeRqtd() const {
  if (Listener()) Listener()->RetakeRqtd();
}

void TTagRows::Post(BMessage message) const {
  if (fList->Window()) fList->Window()->PostMessage(&message);
}

void TTagRows::Report(const std::string& text, const std::string& finding) const {
  BMessage report(kMsgStatBarStr);
  report.AddString("StatBarStr", text);
  if (!finding.empty()) report.AddString("Finding", finding);
  Post(std::move(report));
}

void TTagRows::Report(const char* key, int32 number) const {
  Report(gLLT->Text(key) + std::to_string(number));
}
