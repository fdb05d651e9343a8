#include "platform/interface/window_peer.h"

#include "platform/display/accessible_role.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/widget_guard.h"
#include "platform/display/window_guard.h"
#include "platform/display/workspaces.h"

#include <QDialog>
#include <QLayout>
#include <QMenuBar>
#include <QPointer>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <cmath>

namespace display {

struct WindowPeer::Slot {
  DisplayThreadOnly<QPointer<QWidget>> widget;
  DisplayThreadOnly<WindowGuard*> guard;       // the widget's child
  DisplayThreadOnly<QPointer<QWidget>> behind; // the window that this one stays in front of
};

namespace {

Qt::WindowFlags flags_of(const WindowSetup& setup) {
  Qt::WindowFlags flags = setup.look == B_MODAL_WINDOW_LOOK      ? Qt::Dialog
                          : setup.look == B_FLOATING_WINDOW_LOOK ? Qt::Tool
                                                                 : Qt::Window;
  flags |= Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (!(setup.flags & B_NOT_MINIMIZABLE)) flags |= Qt::WindowMinimizeButtonHint;
  if (!(setup.flags & (B_NOT_ZOOMABLE | B_NOT_RESIZABLE))) flags |= Qt::WindowMaximizeButtonHint;
  flags.setFlag(Qt::WindowStaysOnTopHint, setup.feel == B_FLOATING_ALL_WINDOW_FEEL);
  return flags;
}

QWidget* make_plain_window(const WindowSetup& setup) {
  auto* widget = new QWidget(nullptr, flags_of(setup));
  widget->setGeometry(to_qrect(setup.frame));
  widget->setAcceptDrops(true);
  set_accessible_role(widget, setup.look == B_MODAL_WINDOW_LOOK ? QAccessible::Dialog : QAccessible::Window);
  if (setup.flags & B_NOT_RESIZABLE) widget->setFixedSize(to_qrect(setup.frame).size());
  return widget;
}

/** The window, or the modal question in front of it. */
QWidget* foremost(QWidget* window) {
  for (auto* dialog : window->findChildren<QDialog*>(QString(), Qt::FindDirectChildrenOnly))
    if (dialog->isVisible() && dialog->isModal()) return dialog;
  return window;
}

/** Size limit in pixels, clamped to Qt's maximum. */
int pixels(float limit) {
  return static_cast<int>(std::clamp(std::round(limit) + 1, 0.0F, float(QWIDGETSIZE_MAX)));
}

} // namespace

WindowPeer::WindowPeer(const BMessenger& window, const WindowSetup& setup, std::function<QWidget*()> make)
    : fSlot(std::make_shared<Slot>()), fPlace(std::make_shared<WindowPlace>()) {
  fPlace->frame = setup.frame;
  post([slot = fSlot, place = fPlace, window, setup, make = std::move(make)] {
    QWidget* const widget = make ? make() : make_plain_window(setup);
    widget->setWindowTitle(to_qstring(setup.title));
    *slot->guard = new WindowGuard(widget, window, place);
    *slot->widget = widget;
  });
}

WindowPeer::~WindowPeer() {
  post([slot = fSlot] { delete *slot->widget; });
}

void WindowPeer::Change(std::function<void(QWidget*)> change) const {
  post([slot = fSlot, change = std::move(change)] {
    if (*slot->widget) change(*slot->widget);
  });
}

void WindowPeer::Show(bool takesFocus) {
  Change([takesFocus](QWidget* widget) {
    widget->setAttribute(Qt::WA_ShowWithoutActivating, !takesFocus);
    widget->show();
    if (takesFocus) widget->activateWindow(); // if no window manager does
  });
}

void WindowPeer::Hide() {
  Change([slot = fSlot](QWidget* widget) {
    const bool wasActive = widget->isActiveWindow();
    widget->hide();
    if (wasActive && *slot->behind) (*slot->behind)->activateWindow(); // if no window manager does
  });
}

void WindowPeer::StandInFrontOf(const WindowPeer& other) {
  Change([slot = fSlot, otherSlot = other.fSlot](QWidget* widget) {
    QWidget* const behind = *otherSlot->widget;
    *slot->behind = behind;
    if (!behind) return;
    widget->winId(); // creates the window handle
    behind->winId();
    widget->windowHandle()->setTransientParent(behind->windowHandle());
  });
}

void WindowPeer::Activate(bool active) {
  Change([active](QWidget* widget) {
    if (!active) return widget->lower();
    widget->raise();
    foremost(widget)->raise();
    foremost(widget)->activateWindow();
  });
}

void WindowPeer::MoveTo(BPoint leftTop) {
  {
    const std::scoped_lock hold(fPlace->lock);
    fPlace->frame.OffsetTo(leftTop);
    ++fPlace->movesAsked;
  }
  Change([slot = fSlot, leftTop](QWidget*) { (*slot->guard)->MoveTo(leftTop); });
}

void WindowPeer::ResizeTo(BPoint size) {
  Change([size](QWidget* widget) { widget->resize(pixels(size.x), pixels(size.y)); });
}

void WindowPeer::SetSizeLimits(BPoint smallest, BPoint largest) {
  Change([smallest, largest](QWidget* widget) {
    widget->setMinimumSize(pixels(smallest.x), pixels(smallest.y));
    widget->setMaximumSize(pixels(largest.x), pixels(largest.y));
  });
}

void WindowPeer::SetTitle(const std::string& title) {
  Change([title](QWidget* widget) { widget->setWindowTitle(to_qstring(title)); });
}

void WindowPeer::SetFeel(window_feel feel) {
  Change([feel](QWidget* widget) {
    const bool onTop = feel == B_FLOATING_ALL_WINDOW_FEEL;
    if (widget->windowFlags().testFlag(Qt::WindowStaysOnTopHint) == onTop) return;
    // Changing the flags hides the window.
    const bool wasVisible = widget->isVisible();
    const QRect geometry = widget->geometry();
    widget->setWindowFlag(Qt::WindowStaysOnTopHint, onTop);
    widget->setGeometry(geometry);
    if (wasVisible) widget->show();
  });
}

BRect WindowPeer::Frame() const {
  const std::scoped_lock hold(fPlace->lock);
  return fPlace->frame;
}

uint32 WindowPeer::Workspaces() const {
  return call([slot = fSlot] { return *slot->widget ? workspaces_of(**slot->widget) : uint32{0}; });
}

WindowMove WindowPeer::Move() const {
  const std::scoped_lock hold(fPlace->lock);
  WindowMove move{fPlace->frame.LeftTop(), std::nullopt};
  if (fPlace->movesAsked == fPlace->movesDone) move.end = fPlace->moveEnd;
  return move;
}

std::function<void(QWidget*)> WindowPeer::Taker() const {
  return [slot = fSlot](QWidget* control) {
    QWidget* const window = *slot->widget;
    control->setParent(window);
    // Qt's file dialog lays its widgets out itself.
    if (auto* bar = qobject_cast<QMenuBar*>(control); bar && window && window->layout())
      window->layout()->setMenuBar(bar);
  };
}

std::function<QWidget*()> WindowPeer::Finder() const {
  return [slot = fSlot]() -> QWidget* { return *slot->widget; };
}

} // namespace display
