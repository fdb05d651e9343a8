#include "platform/display/widget_guard.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"
#include "platform/display/event_time.h"
#include "platform/display/key_bytes.h"
#include "platform/display/scrolled_page.h"
#include "platform/interface/follow.h"
#include "platform/kernel/modifiers.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLayout>
#include <QWidget>

namespace display {

namespace {

bool is_plain_tab(const QKeyEvent& key) {
  return key.key() == Qt::Key_Tab && key.modifiers() == Qt::NoModifier;
}

} // namespace

WidgetGuard::WidgetGuard(QWidget* widget, const BMessenger& view, Keys keys)
    : QObject(widget), fWidget(widget), fView(view), fKeys(keys) {
  assert_on_display_thread();
  widget->installEventFilter(this);
}

WidgetGuard* WidgetGuard::Of(const QWidget* widget) {
  for (QObject* child : widget->children())
    if (auto* guard = dynamic_cast<WidgetGuard*>(child)) return guard;
  return nullptr;
}

void WidgetGuard::SetPlacement(const Placement& placement) {
  fPlacement = placement;
  Place();
}

void WidgetGuard::FillParent() {
  fFillsParent = true;
  Place();
}

void WidgetGuard::Place() {
  const QWidget* parent = fWidget->parentWidget();
  if (!parent || parent->layout() || ScrolledPage::Places(fWidget)) return;
  fWidget->setGeometry(fFillsParent ? parent->contentsRect()
                                    : to_qrect(follow_parent(fPlacement.frame, fPlacement.resizingMode,
                                                             fPlacement.parentSize, size_of(parent->size()))));
}

void WidgetGuard::HandBack(const KeyPress& key) {
  Qt::KeyboardModifiers down;
  if (key.modifiers & B_SHIFT_KEY) down |= Qt::ShiftModifier;
  const bool typesText = key.bytes.size() > 1 || (!key.bytes.empty() && static_cast<uint8>(key.bytes[0]) >= 0x20);
  QKeyEvent press(QEvent::KeyPress, key.keyCode, down, typesText ? to_qstring(key.bytes) : QString(), key.repeat > 0);
  fHandsBack = true;
  QCoreApplication::sendEvent(fWidget, &press);
  fHandsBack = false;
}

bool WidgetGuard::eventFilter(QObject* receiver, QEvent* event) {
  switch (event->type()) {
  case QEvent::KeyPress:
    return !fHandsBack && fKeys != Keys::to_control && SendKey(*static_cast<QKeyEvent*>(event));
  case QEvent::FocusIn: {
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    SendFocus(true, reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason);
    break;
  }
  case QEvent::FocusOut: {
    // The view remains the focus of its window while a menu is open or another window is active.
    const auto reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason && reason != Qt::MenuBarFocusReason)
      SendFocus(false);
    break;
  }
  case QEvent::Resize:
    place_children(fWidget);
    break;
  default:
    break;
  }
  return QObject::eventFilter(receiver, event);
}

bool WidgetGuard::SendKey(const QKeyEvent& event) {
  std::string bytes = key_bytes(event);
  if (bytes.empty() && fKeys == Keys::to_program_with_commands) bytes = command_bytes(event);
  if (fKeys == Keys::to_program_with_tabs && is_plain_tab(event)) bytes = "\t";
  if (bytes.empty()) return false;
  fRepeat = event.isAutoRepeat() ? fRepeat + 1 : 0;
  BMessage key(B_KEY_DOWN);
  key.AddString("bytes", bytes);
  key.AddInt32("modifiers", static_cast<int32>(modifiers()));
  key.AddInt32("key_repeat", fRepeat);
  key.AddInt64("when", time_of(event));
  key.AddInt32("key_code", event.key());
  key.AddInt32("scan_code", static_cast<int32>(event.nativeScanCode()));
  fView.SendMessage(&key, BMessenger(), 0);
  return true;
}

void WidgetGuard::SendFocus(bool focused, bool byTab) const {
  BMessage change(DISPLAY_FOCUS_CHANGED);
  change.AddBool("focused", focused);
  change.AddBool("byTab", byTab);
  fView.SendMessage(&change, BMessenger(), 0);
}

void place_children(const QWidget* parent) {
  for (QObject* child : parent->children())
    if (const auto* widget = qobject_cast<QWidget*>(child))
      if (WidgetGuard* guard = WidgetGuard::Of(widget)) guard->Place();
}

} // namespace display
