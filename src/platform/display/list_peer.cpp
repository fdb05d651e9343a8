#include "platform/interface/list_peer.h"

#include "platform/display/convert.h"
#include "platform/display/row_list.h"

namespace display {

namespace {

RowList& list(QWidget* widget) {
  return *static_cast<RowList*>(widget);
}

} // namespace

ListPeer::ListPeer(const BMessenger& view, bool selectsSeveral)
    : ViewPeer(view, Keys::to_program_with_commands, [=]() -> QWidget* { return new RowList(view, selectsSeveral); }) {}

void ListPeer::SetRows(RowLayout layout, int32 firstChanged) {
  Change([layout = std::move(layout), firstChanged](QWidget* widget) { list(widget).SetRows(layout, firstChanged); });
}

void ListPeer::SetPictures(std::vector<std::pair<int32, BPicture>> pictures) {
  Change([pictures = std::move(pictures)](QWidget* widget) { list(widget).SetPictures(pictures); });
}

void ListPeer::Select(const row_selection& rows) {
  Change([rows](QWidget* widget) { list(widget).SelectRows(rows); });
}

void ListPeer::ScrollTo(int32 row) {
  Change([row](QWidget* widget) { list(widget).ScrollToRow(row); });
}

void ListPeer::KeepInSight(int32 row) {
  Change([row](QWidget* widget) { list(widget).KeepInSight(row); });
}

void ListPeer::Invalidate(int32 first, int32 last) {
  Change([first, last](QWidget* widget) { list(widget).InvalidateRows(first, last); });
}

void ListPeer::SetShortcuts(std::vector<ListShortcut> shortcuts) {
  Change([shortcuts = std::move(shortcuts)](QWidget* widget) { list(widget).SetShortcuts(shortcuts); });
}

void ListPeer::ReportReleases(bool reports) {
  Change([reports](QWidget* widget) { list(widget).ReportReleases(reports); });
}

void ListPeer::SetPlaceholder(const std::string& text, rgb_color color) {
  Change([=](QWidget* widget) { list(widget).SetPlaceholder(to_qstring(text), to_qcolor(color)); });
}

} // namespace display
