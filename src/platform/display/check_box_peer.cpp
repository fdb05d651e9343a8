#include "platform/interface/check_box_peer.h"

#include "platform/app/message.h"
#include "platform/display/accelerators.h"

#include <QCheckBox>

namespace display {

namespace {

QCheckBox* make_check_box(const BMessenger& view) {
  auto* box = new QCheckBox;
  // Clicked by the user, not set by the program.
  QObject::connect(box, &QCheckBox::clicked, box, [view](bool isChecked) {
    BMessage chosen(DISPLAY_VALUE_CHOSEN);
    chosen.AddInt32("value", isChecked ? 1 : 0);
    view.SendMessage(&chosen, BMessenger(), 0);
  });
  return box;
}

QCheckBox& box(QWidget* widget) {
  return *static_cast<QCheckBox*>(widget);
}

} // namespace

CheckBoxPeer::CheckBoxPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return make_check_box(view); }) {}

void CheckBoxPeer::SetLabel(const std::string& label) {
  Change([label](QWidget* widget) { box(widget).setText(accelerated_label(label)); });
}

void CheckBoxPeer::SetChecked(bool isChecked) {
  Change([isChecked](QWidget* widget) { box(widget).setChecked(isChecked); });
}

} // namespace display
