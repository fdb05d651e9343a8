#include "platform/interface/list_view.h"

#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/window.h"

#include <algorithm>

BListView::BListView(BRect frame, const char* name, list_view_type type, uint32 resizingMode, uint32 flags)
    : BView(frame, name, resizingMode, flags), fType(type) {}

BListView::~BListView() = default;

std::shared_ptr<display::ViewPeer> BListView::MakePeer() {
  auto peer = std::make_shared<display::ListPeer>(BMessenger(this), fType == B_RANGE_SELECTION_LIST);
  if (!fPlaceholder.empty()) peer->SetPlaceholder(fPlaceholder, fPlaceholderColor);
  return peer;
}

void BListView::SetPlaceholder(const std::string& text, rgb_color color) {
  if (text == fPlaceholder && (text.empty() || color == fPlaceholderColor)) return;
  fPlaceholder = text;
  fPlaceholderColor = color;
  if (Rows()) Rows()->SetPlaceholder(text, color);
}

display::ListPeer* BListView::Rows() const {
  return static_cast<display::ListPeer*>(Peer());
}

void BListView::AllAttached() {
  for (BListItem* item : fItems) Measure(item);
  RowsChanged(0);
  Rows()->SetShortcuts(fShortcuts);
  Rows()->ReportReleases(fReportsReleases);
}

void BListView::SetShortcuts(std::vector<display::ListShortcut> shortcuts) {
  fShortcuts = std::move(shortcuts);
  if (Rows()) Rows()->SetShortcuts(fShortcuts);
}

void BListView::ReportReleases(bool reports) {
  fReportsReleases = reports;
  if (Rows()) Rows()->ReportReleases(reports);
}

void BListView::Measure(BListItem* item) {
  if (!Window()) return; // measured when the list is attached
  BFont font;
  GetFont(&font);
  item->Update(this, &font);
}

void BListView::AddList(const std::vector<BListItem*>& items) {
  const int32 before = CountItems();
  for (BListItem* item : items) Measure(item);
  fItems.insert(fItems.end(), items.begin(), items.end());
  RowsChanged(before);
}

void BListView::MakeEmpty() {
  if (fItems.empty()) return;
  const bool hadSelection = fSelection.Count() > 0;
  MarkSelected(false);
  fSelection = {};
  fItems.clear();
  RowsChanged(0);
  if (hadSelection) SelectionChanged();
}

BListItem* BListView::ItemAt(int32 index) const {
  return index >= 0 && index < CountItems() ? fItems[static_cast<size_t>(index)] : nullptr;
}

int32 BListView::IndexOf(const BListItem* item) const {
  const auto found = std::find(fItems.begin(), fItems.end(), item);
  return found == fItems.end() ? -1 : static_cast<int32>(found - fItems.begin());
}

void BListView::MessageReceived(BMessage* message) {
  int32 row = -1;
  int32 command = 0;
  switch (message->what) {
  case display::DISPLAY_SHORTCUT:
    if (message->FindInt32("command", &command) == B_OK) ShortcutPressed(command);
    return;
  case display::DISPLAY_ROWS_CHANGED:
    return FlushRows();
  case display::DISPLAY_ROWS_WANTED:
    return DrawRows(*message);
  case display::DISPLAY_ROW_CHOSEN:
    if (message->FindInt32("row", &row) == B_OK)
      SelectRange(message->HasField("extends") ? fSelection.Anchor() : row, row);
    return;
  case display::DISPLAY_ROW_INVOKED:
    if (message->FindInt32("row", &row) != B_OK) return;
    Select(row);
    return Invoke();
  default:
    return BView::MessageReceived(message);
  }
}
