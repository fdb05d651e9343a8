#pragma once

#include <QAccessible>

class QWidget;

namespace display {

/** Sets the role for screen readers where the widget's class does not imply it. Before the widget is shown. */
void set_accessible_role(QWidget* widget, QAccessible::Role role);

} // namespace display
