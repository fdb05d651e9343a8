#include "platform/display/key_bytes.h"

#include "platform/interface/interface_defs.h"

#include <QKeyEvent>

namespace display {

namespace {

/** 0 for keys without a byte of their own. */
uint8 special_byte(int key) {
  switch (key) {
  case Qt::Key_Left:
    return B_LEFT_ARROW;
  case Qt::Key_Right:
    return B_RIGHT_ARROW;
  case Qt::Key_Up:
    return B_UP_ARROW;
  case Qt::Key_Down:
    return B_DOWN_ARROW;
  case Qt::Key_Home:
    return B_HOME;
  case Qt::Key_End:
    return B_END;
  case Qt::Key_PageUp:
    return B_PAGE_UP;
  case Qt::Key_PageDown:
    return B_PAGE_DOWN;
  case Qt::Key_Insert:
    return B_INSERT;
  case Qt::Key_Delete:
    return B_DELETE;
  case Qt::Key_Backspace:
    return B_BACKSPACE;
  case Qt::Key_Return:
  case Qt::Key_Enter:
    return B_RETURN;
  case Qt::Key_Escape:
    return B_ESCAPE;
  default:
    return key >= Qt::Key_F1 && key <= Qt::Key_F35 ? B_FUNCTION_KEY : 0;
  }
}

} // namespace

std::string key_bytes(const QKeyEvent& key) {
  if (key.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) return {};
  if (key.key() == Qt::Key_Tab || key.key() == Qt::Key_Backtab) return {};
  if (const uint8 byte = special_byte(key.key())) return std::string(1, static_cast<char>(byte));
  return key.text().toStdString();
}

std::string command_bytes(const QKeyEvent& key) {
  if ((key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != Qt::ControlModifier) return {};
  if (key.key() == Qt::Key_Space) return " ";
  switch (const uint8 byte = special_byte(key.key())) {
  case B_LEFT_ARROW:
  case B_RIGHT_ARROW:
  case B_UP_ARROW:
  case B_DOWN_ARROW:
  case B_HOME:
  case B_END:
  case B_PAGE_UP:
  case B_PAGE_DOWN:
    return std::string(1, static_cast<char>(byte));
  default:
    return {};
  }
}

} // namespace display
