#include "platform/interface/text_peer.h"

#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/text_area.h"
#include "platform/display/text_bytes.h"
#include "platform/display/view_peer_slot.h"

namespace display {

namespace {

TextArea& area(QWidget* widget) {
  return *static_cast<TextArea*>(widget);
}

/** Calls `question` with the widget; a default value once it is gone. */
template <class Slot, class Question>
auto asked(const Slot& slot, Question question) {
  using Reply = std::invoke_result_t<Question, TextArea&>;
  return call([slot, question] { return *slot->widget ? question(area(*slot->widget)) : Reply{}; });
}

} // namespace

TextPeer::TextPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_program_with_tabs, [view]() -> QWidget* { return new TextArea(view); }) {}

void TextPeer::SetText(const std::string& text) {
  Change([text](QWidget* widget) { area(widget).SetBytes(text); });
}

void TextPeer::Insert(const std::string& text) {
  Change([text](QWidget* widget) { area(widget).Enter(text_from_bytes(text)); });
}

void TextPeer::SelectFromCaret(int32 from, int32 length) {
  Change([=](QWidget* widget) { area(widget).SelectFromCaret(from, length); });
}

std::string TextPeer::DoCommand(int32 key, int32 modifiers) {
  return asked(TheSlot(), [=](TextArea& text) { return bytes_from_text(text.DoCommand(key, modifiers)); });
}

std::string TextPeer::DoCtrlKey(char letter) {
  return DoCommand(letter, static_cast<int32>(QFlags(Qt::ControlModifier).toInt()));
}

bool TextPeer::ReplaceLines(const text_change& change) {
  return asked(TheSlot(), [change](TextArea& text) { return text.ReplaceLines(change); });
}

std::vector<text_change> TextPeer::TakeChanges() {
  return asked(TheSlot(), [](TextArea& text) { return text.TakeChanges(); });
}

void TextPeer::SetCountWidth(int width) {
  Change([width](QWidget* widget) { area(widget).SetCountWidth(width); });
}

void TextPeer::SetEditable(bool editable) {
  Change([editable](QWidget* widget) { area(widget).setReadOnly(!editable); });
}

void TextPeer::SetTextColor(rgb_color color) {
  Change([color](QWidget* widget) {
    QPalette palette = widget->palette();
    palette.setColor(QPalette::Text, to_qcolor(color));
    widget->setPalette(palette);
  });
}

void TextPeer::SetPlaceholder(const std::string& text) {
  Change([text](QWidget* widget) { area(widget).SetPlaceholder(to_qstring(text)); });
}

void TextPeer::GoToLine(int32 line) {
  Change([line](QWidget* widget) { area(widget).GoToLine(line); });
}

void TextPeer::ScrollToSelection() {
  Change([](QWidget* widget) { area(widget).ensureCursorVisible(); });
}

void TextPeer::SelectInLine(int32 line, const std::string& before, const std::string& text) {
  Change([line, before, text](QWidget* widget) { area(widget).SelectInLine(line, before, text); });
}

std::string TextPeer::Text() const {
  return asked(TheSlot(), [](TextArea& text) { return bytes_from_text(text.document()->toRawText()); });
}

int32 TextPeer::CurrentLine() const {
  return asked(TheSlot(), [](TextArea& text) { return int32{text.CurrentLine()}; });
}

} // namespace display
