#pragma once

#include "platform/interface/control_peer.h"

#include <QKeyEvent>

#include <string>
#include <utility>
#include <vector>

namespace display {

/** What the widget of a ControlPeer implements of its setters. Display thread. */
class ControlWidget {
public:
  virtual ~ControlWidget() = default;
  virtual void ShowLabel(const std::string&) {}
  virtual void ShowValue(int32) {}
  virtual void ShowChoices(const std::vector<std::string>&) {}
  virtual void ShowText(const std::string&) {}
  virtual void SelectAll() {}
  virtual void PlaceCaretAfter(const std::string&) {}
  /** In UTF-8, up to the caret and from it on. */
  virtual std::pair<std::string, std::string> TextAroundCaret() const { return {}; }
};

/** A button that Return clicks too while it has the focus, instead of the window's default button. */
template <class Button>
class ReturnClicks : public Button {
protected:
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return this->click();
    Button::keyPressEvent(event);
  }
};

/** Sends the view the value that the user has chosen. */
void send_value(const BMessenger& view, int32 value);

} // namespace display
