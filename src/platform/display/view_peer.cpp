#include "platform/interface/view_peer.h"

#include "platform/display/accessible_role.h"
#include "platform/display/convert.h"
#include "platform/display/plain_widget.h"
#include "platform/display/view_peer_slot.h"
#include "platform/display/widget_guard.h"
#include "platform/interface/window_peer.h"

#include <QPalette>
#include <QToolTip>

namespace display {

namespace {

QAccessible::Role qt_role_of(accessible_role role) {
  switch (role) {
  case B_TOOL_BAR_ROLE:
    return QAccessible::ToolBar;
  case B_STATUS_BAR_ROLE:
    return QAccessible::StatusBar;
  case B_NOTIFICATION_ROLE:
    break;
  }
  return QAccessible::Notification;
}

} // namespace

ViewPeer::ViewPeer(const BMessenger& view, Keys keys, std::function<QWidget*()> make)
    : fSlot(std::make_shared<Slot>()) {
  post([slot = fSlot, view, keys, make = std::move(make)] {
    QWidget* const widget = make();
    widget->hide();
    new WidgetGuard(widget, view, keys);
    *slot->widget = widget;
  });
}

ViewPeer::~ViewPeer() {
  post([slot = fSlot] { delete *slot->widget; });
}

void ViewPeer::Change(std::function<void(QWidget*)> change) const {
  post([slot = fSlot, change = std::move(change)] {
    if (*slot->widget) change(*slot->widget);
  });
}

void ViewPeer::Guard(std::function<void(WidgetGuard*)> change) const {
  Change([change = std::move(change)](QWidget* widget) { change(WidgetGuard::Of(widget)); });
}

void ViewPeer::SetName(const std::string& name) {
  Change([name](QWidget* widget) { widget->setObjectName(to_qstring(name)); });
}

void ViewPeer::AttachTo(const ViewPeer& parent) {
  Change([parentSlot = parent.fSlot](QWidget* widget) { widget->setParent(*parentSlot->widget); });
}

void ViewPeer::AttachTo(const WindowPeer& window) {
  Change([take = window.Taker()](QWidget* widget) { take(widget); });
}

void ViewPeer::SetPlacement(const Placement& placement) {
  Guard([placement](WidgetGuard* guard) { guard->SetPlacement(placement); });
}

void ViewPeer::FillParent() {
  Guard([](WidgetGuard* guard) { guard->FillParent(); });
}

BPoint ViewPeer::PreferredSize() const {
  return call([slot = fSlot] { return *slot->widget ? size_of((*slot->widget)->sizeHint()) : BPoint{}; });
}

void ViewPeer::SetVisible(bool visible) {
  Change([visible](QWidget* widget) { widget->setVisible(visible); });
}

void ViewPeer::SetFocus(bool focused) {
  Change([focused](QWidget* widget) {
    if (focused)
      widget->setFocus();
    else
      widget->clearFocus();
  });
}

void ViewPeer::SetEnabled(bool enabled) {
  Change([enabled](QWidget* widget) { widget->setEnabled(enabled); });
}

void ViewPeer::SetColor(rgb_color color) {
  Change([color](QWidget* widget) {
    QPalette palette = color.alpha != 0 ? widget->palette() : QPalette();
    if (color.alpha != 0) {
      palette.setColor(QPalette::Window, to_qcolor(color));
      palette.setColor(QPalette::Base, to_qcolor(color));
    }
    widget->setPalette(palette);
    widget->setAutoFillBackground(color.alpha != 0);
  });
}

void ViewPeer::SetFont(const BFont& font) {
  Change([font](QWidget* widget) { widget->setFont(to_qfont(font)); });
}

void ViewPeer::SetToolTip(const std::string& text) {
  Change([text](QWidget* widget) { widget->setToolTip(to_qstring(text)); });
}

void ViewPeer::ShowToolTip(bool shown) {
  Change([shown](QWidget* widget) {
    if (!shown) return QToolTip::hideText();
    QToolTip::showText(widget->mapToGlobal(QPoint(0, widget->height())), widget->toolTip(), widget);
  });
}

void ViewPeer::SetAccessibleTexts(const std::string& name, const std::string& description) {
  Change([name, description](QWidget* widget) {
    widget->setAccessibleName(to_qstring(name));
    widget->setAccessibleDescription(to_qstring(description));
  });
}

void ViewPeer::SetAccessibleRole(accessible_role role) {
  Change([role](QWidget* widget) { set_accessible_role(widget, qt_role_of(role)); });
}

void ViewPeer::SetPicture(BPicture picture) {
  Change([picture = std::move(picture)](QWidget* widget) {
    if (auto* plain = dynamic_cast<PlainWidget*>(widget)) plain->SetPicture(picture);
  });
}

void ViewPeer::HandBack(const KeyPress& key) {
  Guard([key](WidgetGuard* guard) { guard->HandBack(key); });
}

std::shared_ptr<ViewPeer> make_plain_peer(const BMessenger& view, bool navigable) {
  return std::make_shared<ViewPeer>(view, Keys::to_program, [navigable]() -> QWidget* {
    auto* widget = new PlainWidget;
    widget->setFocusPolicy(navigable ? Qt::StrongFocus : Qt::NoFocus);
    return widget;
  });
}

} // namespace display
