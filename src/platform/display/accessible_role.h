#pragma once

#include <QAccessible>

class QWidget;

namespace display {

/** What assistive programs are told the widget is, where its class alone does not say it. Before the widget is shown.
 */
void set_accessible_role(QWidget* widget, QAccessible::Role role);

} // namespace display
