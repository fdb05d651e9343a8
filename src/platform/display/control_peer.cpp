#include "platform/interface/control_peer.h"

#include "platform/app/message.h"
#include "platform/display/control_widget.h"
#include "platform/display/view_peer_slot.h"

#include <QWidget>

namespace display {

namespace {

ControlWidget& control(QWidget* widget) {
  return dynamic_cast<ControlWidget&>(*widget);
}

} // namespace

void ControlPeer::SetLabel(const std::string& label) {
  Change([label](QWidget* widget) { control(widget).ShowLabel(label); });
}

void ControlPeer::SetValue(int32 value) {
  Change([value](QWidget* widget) { control(widget).ShowValue(value); });
}

void ControlPeer::SetFocusByTabOnly() {
  Change([](QWidget* widget) { widget->setFocusPolicy(Qt::TabFocus); });
}

void ControlPeer::SetChoices(const std::vector<std::string>& choices) {
  Change([choices](QWidget* widget) { control(widget).ShowChoices(choices); });
}

void ControlPeer::SetText(const std::string& text) {
  Change([text](QWidget* widget) { control(widget).ShowText(text); });
}

void ControlPeer::SelectAll() {
  Change([](QWidget* widget) { control(widget).SelectAll(); });
}

void ControlPeer::PlaceCaretAfter(const std::string& start) {
  Change([start](QWidget* widget) { control(widget).PlaceCaretAfter(start); });
}

std::pair<std::string, std::string> ControlPeer::TextAroundCaret() const {
  using TTexts = std::pair<std::string, std::string>;
  return call([slot = TheSlot()] { return *slot->widget ? control(*slot->widget).TextAroundCaret() : TTexts(); });
}

void send_value(const BMessenger& view, int32 value) {
  BMessage chosen(DISPLAY_VALUE_CHOSEN);
  chosen.AddInt32("value", value);
  view.SendMessage(&chosen, BMessenger(), 0);
}

} // namespace display
