#include "platform/display/input_watch.h"

#include "platform/interface/interface_defs.h"
#include "platform/kernel/modifiers.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace display {

namespace {

uint32 modifier_bits(Qt::KeyboardModifiers down) {
  uint32 bits = 0;
  if (down & Qt::ShiftModifier) bits |= B_SHIFT_KEY;
  if (down & Qt::ControlModifier) bits |= B_COMMAND_KEY;
  if (down & Qt::AltModifier) bits |= B_CONTROL_KEY;
  if (down & Qt::MetaModifier) bits |= B_OPTION_KEY;
  return bits;
}

uint32 bit_of_key(int key) {
  switch (key) {
  case Qt::Key_Shift:
    return B_SHIFT_KEY;
  case Qt::Key_Control:
    return B_COMMAND_KEY;
  case Qt::Key_Alt:
    return B_CONTROL_KEY;
  case Qt::Key_Meta:
  case Qt::Key_Super_L:
  case Qt::Key_Super_R:
    return B_OPTION_KEY;
  default:
    return 0;
  }
}

uint32 button_bits(Qt::MouseButtons down) {
  uint32 bits = 0;
  if (down & Qt::LeftButton) bits |= B_PRIMARY_MOUSE_BUTTON;
  if (down & Qt::RightButton) bits |= B_SECONDARY_MOUSE_BUTTON;
  if (down & Qt::MiddleButton) bits |= B_TERTIARY_MOUSE_BUTTON;
  return bits;
}

/** A modifier key's own event still bears the state from before it. */
void report_key(const QKeyEvent& key) {
  uint32 bits = modifier_bits(key.modifiers());
  const uint32 own = bit_of_key(key.key());
  if (key.type() == QEvent::KeyRelease)
    bits &= ~own;
  else
    bits |= own;
  report_modifiers(bits);
}

#if QT_CONFIG(xcb)
void report_x11_pointer(xcb_connection_t* connection) {
  const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
  const std::unique_ptr<xcb_query_pointer_reply_t, decltype(&std::free)> pointer(
      xcb_query_pointer_reply(connection, xcb_query_pointer(connection, root), nullptr), &std::free);
  if (!pointer) return;
  uint32 bits = 0;
  if (pointer->mask & XCB_BUTTON_MASK_1) bits |= B_PRIMARY_MOUSE_BUTTON;
  if (pointer->mask & XCB_BUTTON_MASK_2) bits |= B_TERTIARY_MOUSE_BUTTON;
  if (pointer->mask & XCB_BUTTON_MASK_3) bits |= B_SECONDARY_MOUSE_BUTTON;
  report_mouse_buttons(bits);
}
#endif

} // namespace

InputWatch::InputWatch() {
  report_real_input_state();
  QCoreApplication::instance()->installEventFilter(this);
}

bool InputWatch::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
  case QEvent::KeyPress:
  case QEvent::KeyRelease:
  case QEvent::ShortcutOverride:
    report_key(*static_cast<QKeyEvent*>(event));
    break;
  case QEvent::MouseButtonPress:
  case QEvent::MouseButtonRelease:
  case QEvent::MouseButtonDblClick: {
    const auto* mouse = static_cast<QMouseEvent*>(event);
    report_mouse_buttons(button_bits(mouse->buttons()));
    report_modifiers(modifier_bits(mouse->modifiers()));
    break;
  }
  case QEvent::WindowActivate:
    report_modifiers(modifier_bits(QGuiApplication::queryKeyboardModifiers()));
    break;
  default:
    break;
  }
  return false;
}

void report_real_input_state() {
  report_modifiers(modifier_bits(QGuiApplication::queryKeyboardModifiers()));
#if QT_CONFIG(xcb)
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  // The offscreen platform has the interface but no connection behind it.
  if (x11 && x11->connection()) return report_x11_pointer(x11->connection());
#endif
  report_mouse_buttons(button_bits(QGuiApplication::mouseButtons()));
}

} // namespace display
