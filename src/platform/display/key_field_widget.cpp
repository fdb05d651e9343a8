#include "platform/app/message.h"
#include "platform/display/control_widget.h"
#include "platform/display/convert.h"

#include <QKeySequence>
#include <QLineEdit>

/** The widget of BKeyField. */

namespace display {

namespace {

bool is_modifier(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_Meta ||
         key == Qt::Key_AltGr || key == Qt::Key_CapsLock || key == Qt::Key_NumLock || key == Qt::Key_unknown;
}

bool leaves_field(int key) {
  return key == Qt::Key_Tab || key == Qt::Key_Backtab || key == Qt::Key_Escape;
}

/** Shift only counts where it does not itself make the character: "?" and not "Shift+?". */
QKeySequence keys_of(const QKeyEvent& event) {
  Qt::KeyboardModifiers held = event.modifiers() & ~(Qt::KeypadModifier | Qt::GroupSwitchModifier);
  const QString text = event.text();
  const bool typesSign = !text.isEmpty() && text[0].isPrint() && !text[0].isLetterOrNumber() && !text[0].isSpace();
  if (typesSign) held &= ~Qt::ShiftModifier;
  const int key = event.key() == Qt::Key_Enter ? int{Qt::Key_Return} : event.key();
  return QKeySequence(QKeyCombination(held, static_cast<Qt::Key>(key)));
}

class KeyField : public QLineEdit, public ControlWidget {
public:
  explicit KeyField(const BMessenger& view) : fView(view) {
    setReadOnly(true);
    setContextMenuPolicy(Qt::NoContextMenu);
    setAttribute(Qt::WA_InputMethodEnabled, false);
  }
  void ShowText(const std::string& keys) override {
    setText(QKeySequence(to_qstring(keys), QKeySequence::PortableText).toString(QKeySequence::NativeText));
  }

protected:
  bool event(QEvent* event) override {
    // Otherwise the shortcuts of the window would get their keys first.
    if (event->type() == QEvent::ShortcutOverride && !leaves_field(static_cast<QKeyEvent*>(event)->key())) {
      event->accept();
      return true;
    }
    return QLineEdit::event(event);
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (leaves_field(event->key())) return event->ignore();
    if (is_modifier(event->key()) || event->isAutoRepeat()) return;
    BMessage changed(DISPLAY_FIELD_CHANGED);
    changed.AddString("text", keys_of(*event).toString(QKeySequence::PortableText).toStdString());
    fView.SendMessage(&changed, BMessenger(), 0);
  }

private:
  const BMessenger fView;
};

} // namespace

std::shared_ptr<ControlPeer> make_key_field_peer(const BMessenger& view) {
  return std::make_shared<ControlPeer>(view, Keys::to_control, [view]() -> QWidget* { return new KeyField(view); });
}

} // namespace display
