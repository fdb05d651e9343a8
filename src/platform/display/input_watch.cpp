#include "platform/display/input_watch.h"

#include "platform/interface/interface_defs.h"
#include "platform/kernel/modifiers.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QMouseEvent>

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

/** The event of a modifier key itself still has the previous state. */
void report_key(const QKeyEvent& key) {
  uint32 bits = modifier_bits(key.modifiers());
  const uint32 own = bit_of_key(key.key());
  if (key.type() == QEvent::KeyRelease)
    bits &= ~own;
  else
    bits |= own;
  report_modifiers(bits);
}

} // namespace

InputWatch::InputWatch() {
  report_modifiers(modifier_bits(QGuiApplication::queryKeyboardModifiers()));
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
  case QEvent::MouseButtonDblClick:
    report_modifiers(modifier_bits(static_cast<QMouseEvent*>(event)->modifiers()));
    break;
  case QEvent::WindowActivate:
    report_modifiers(modifier_bits(QGuiApplication::queryKeyboardModifiers()));
    break;
  default:
    break;
  }
  return false;
}

} // namespace display
