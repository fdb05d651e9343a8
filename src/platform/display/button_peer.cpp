#include "platform/interface/button_peer.h"

#include "platform/display/accelerators.h"

#include <QKeyEvent>
#include <QPushButton>

namespace display {

namespace {

/** With the focus, Return presses this button and no other. */
class PushButton : public QPushButton {
public:
  explicit PushButton(const BMessenger& view) {
    connect(this, &QPushButton::clicked, this, [view] { view.SendMessage(DISPLAY_CONTROL_WORKED); });
  }

protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QPushButton::keyPressEvent(event);
  }
};

PushButton& button(QWidget* widget) {
  return *static_cast<PushButton*>(widget);
}

} // namespace

ButtonPeer::ButtonPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return new PushButton(view); }) {}

void ButtonPeer::SetLabel(const std::string& label) {
  Change([label](QWidget* widget) { button(widget).setText(accelerated_label(label)); });
}

void ButtonPeer::SetDefault(bool isDefault) {
  Change([isDefault](QWidget* widget) { button(widget).setDefault(isDefault); });
}

} // namespace display
