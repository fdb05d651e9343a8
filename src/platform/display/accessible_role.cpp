#include "platform/display/accessible_role.h"

#include <QAccessibleWidget>
#include <QLabel>

namespace display {

namespace {

constexpr const char* kRole = "accessibleRole";

class WidgetWithRole : public QAccessibleWidget {
public:
  explicit WidgetWithRole(QWidget* widget) : QAccessibleWidget(widget) {}

  QAccessible::Role role() const override { return static_cast<QAccessible::Role>(widget()->property(kRole).toInt()); }

  QString text(QAccessible::Text kind) const override {
    const auto* label = qobject_cast<const QLabel*>(widget());
    return label && kind == QAccessible::Name ? label->text() : QAccessibleWidget::text(kind);
  }
};

QAccessibleInterface* make_interface(const QString&, QObject* object) {
  auto* widget = qobject_cast<QWidget*>(object);
  return widget && widget->property(kRole).isValid() ? new WidgetWithRole(widget) : nullptr;
}

} // namespace

void set_accessible_role(QWidget* widget, QAccessible::Role role) {
  static const bool isInstalled = (QAccessible::installFactory(make_interface), true);
  Q_UNUSED(isInstalled);
  widget->setProperty(kRole, static_cast<int>(role));
}

} // namespace display
