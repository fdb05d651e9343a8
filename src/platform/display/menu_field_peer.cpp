#include "platform/interface/menu_field_peer.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"

#include <QComboBox>

namespace display {

namespace {

QComboBox* make_field(const BMessenger& view) {
  auto* field = new QComboBox;
  // Also when the choice is the one that stood there: it may be one that asks for more.
  QObject::connect(field, &QComboBox::activated, field, [view](int index) {
    BMessage chosen(DISPLAY_VALUE_CHOSEN);
    chosen.AddInt32("value", index);
    view.SendMessage(&chosen, BMessenger(), 0);
  });
  return field;
}

/** The size that the field asks for is found out anew. Left at adjusting itself, it would also take that size, a moment
    later, whatever the page gives it. */
void measure_again(QComboBox* field) {
  field->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  field->setSizeAdjustPolicy(QComboBox::AdjustToContentsOnFirstShow);
}

QComboBox& field(QWidget* widget) {
  return *static_cast<QComboBox*>(widget);
}

} // namespace

MenuFieldPeer::MenuFieldPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return make_field(view); }) {}

void MenuFieldPeer::SetChoices(const std::vector<std::string>& choices) {
  Change([choices](QWidget* widget) {
    field(widget).clear();
    for (const std::string& choice : choices) field(widget).addItem(to_qstring(choice));
    measure_again(&field(widget));
  });
}

void MenuFieldPeer::SetChosen(int32 index) {
  Change([index](QWidget* widget) {
    field(widget).setCurrentIndex(index >= 0 && index < field(widget).count() ? index : -1);
  });
}

} // namespace display
