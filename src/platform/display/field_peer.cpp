#include "platform/interface/field_peer.h"

#include "platform/app/message.h"
#include "platform/display/convert.h"

#include <QLineEdit>

namespace display {

namespace {

QLineEdit* make_field(const BMessenger& view) {
  auto* field = new QLineEdit;
  QObject::connect(field, &QLineEdit::textEdited, field, [view](const QString& text) {
    BMessage changed(DISPLAY_FIELD_CHANGED);
    changed.AddString("text", text.toStdString());
    view.SendMessage(&changed, BMessenger(), 0);
  });
  return field;
}

QLineEdit& field(QWidget* widget) {
  return *static_cast<QLineEdit*>(widget);
}

} // namespace

FieldPeer::FieldPeer(const BMessenger& view)
    : ViewPeer(view, Keys::to_control, [view]() -> QWidget* { return make_field(view); }) {}

void FieldPeer::SetText(const std::string& text) {
  Change([text](QWidget* widget) { field(widget).setText(to_qstring(text)); });
}

void FieldPeer::SelectAll() {
  Change([](QWidget* widget) { field(widget).selectAll(); });
}

} // namespace display
