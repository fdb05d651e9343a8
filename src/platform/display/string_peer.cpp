#include "platform/interface/string_peer.h"

#include "platform/display/convert.h"
#include "platform/display/string_label.h"

namespace display {

namespace {

StringLabel& label(QWidget* widget) {
  return *static_cast<StringLabel*>(widget);
}

Qt::Alignment side_of(alignment align) {
  switch (align) {
  case B_ALIGN_CENTER:
    return Qt::AlignHCenter;
  case B_ALIGN_RIGHT:
    return Qt::AlignRight;
  case B_ALIGN_LEFT:
    break;
  }
  return Qt::AlignLeft;
}

} // namespace

StringPeer::StringPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, []() -> QWidget* { return new StringLabel; }) {}

void StringPeer::SetText(const std::string& text) {
  Change([text](QWidget* widget) { label(widget).setText(to_qstring(text)); });
}

void StringPeer::SetAlignment(alignment align) {
  Change([align](QWidget* widget) { label(widget).setAlignment(side_of(align) | Qt::AlignVCenter); });
}

void StringPeer::SetBuddy(const std::string& control) {
  Change([control](QWidget* widget) {
    if (widget->parentWidget())
      label(widget).setBuddy(widget->parentWidget()->findChild<QWidget*>(to_qstring(control)));
  });
}

} // namespace display
