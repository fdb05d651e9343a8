#include "tests/support/hands.h"

#include "tests/support/hands_widgets.h"

#include <QAccessible>
#include <QLabel>
#include <QListView>
#include <QMetaEnum>
#include <QToolTip>

/** What a user or a screen reader sees of windows. */
namespace hands {

static std::string row_data(BWindow& window, const std::string& list, int row, int role) {
  return with_widget(window, [=](QWidget* widget) {
    const auto* model = qobject_cast<QListView*>(control_of(widget, list))->model();
    return model->data(model->index(row, 0), role).toString().toStdString();
  });
}

std::string row_text(BWindow& window, const std::string& list, int row) {
  return row_data(window, list, row, Qt::AccessibleTextRole);
}

std::string row_description(BWindow& window, const std::string& list, int row) {
  return row_data(window, list, row, Qt::AccessibleDescriptionRole);
}

Spoken spoken(BWindow& window, const std::string& view) {
  return with_widget(window, [view](QWidget* widget) {
    QAccessibleInterface* said = QAccessible::queryAccessibleInterface(control_of(widget, view));
    const QAccessible::State state = said->state();
    const char* role = QMetaEnum::fromType<QAccessible::Role>().valueToKey(said->role());
    return Spoken{said->text(QAccessible::Name).toStdString(), role ? role : "", state.checked != 0, !state.disabled};
  });
}

std::string tip_shown() {
  return display::call([] { return QToolTip::isVisible() ? QToolTip::text().toStdString() : std::string(); });
}

std::string focused_view(BWindow& window) {
  return with_widget(window, [](QWidget* widget) {
    const QWidget* focused = widget->focusWidget();
    return focused ? focused->objectName().toStdString() : std::string();
  });
}

std::string pixels(BWindow& window, const std::string& view) {
  return with_widget(window, [view](QWidget* widget) {
    const QImage image = control_of(widget, view)->grab().toImage();
    return std::string(reinterpret_cast<const char*>(image.constBits()), static_cast<size_t>(image.sizeInBytes()));
  });
}

std::string label_text(BWindow& window, const std::string& view) {
  return with_widget(window, [=](QWidget* widget) {
    const auto* label = qobject_cast<QLabel*>(control_of(widget, view));
    return label ? label->text().toStdString() : std::string();
  });
}

BRect control_frame(BWindow& window, const std::string& view) {
  return with_widget(window, [=](QWidget* widget) {
    const QRect frame = control_of(widget, view)->geometry();
    return BRect{float(frame.left()), float(frame.top()), float(frame.right()), float(frame.bottom())};
  });
}

bool is_on_top(BWindow& window) {
  return with_widget(window, [](QWidget* widget) { return widget->windowFlags().testFlag(Qt::WindowStaysOnTopHint); });
}

bool is_active(BWindow& window) {
  return with_widget(window, [](QWidget* widget) { return widget->isActiveWindow(); });
}

bool is_shown(BWindow& window) {
  return with_widget(window, [](QWidget* widget) { return widget->isVisible(); });
}

} // namespace hands
