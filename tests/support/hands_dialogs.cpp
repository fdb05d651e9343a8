#include "tests/support/hands.h"

#include "platform/display/menu_widgets.h"
#include "tests/support/hands_widgets.h"

#include <QApplication>
#include <QColorDialog>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include <chrono>
#include <optional>
#include <thread>

/** Menus, questions and panels. */
namespace hands {

namespace {

QMessageBox* open_question() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) return box;
  return nullptr;
}

/** A label without mnemonic marks. */
QString without_marks(QString text) {
  return text.replace(QLatin1String("&&"), QStringLiteral("\1"))
      .remove(QLatin1Char('&'))
      .replace(QLatin1Char('\1'), QLatin1Char('&'));
}

QAction* find_action(const QWidget* menu, const std::string& label) {
  for (QAction* action : menu->actions())
    if (without_marks(action->text()) == q(label)) return action;
  return nullptr;
}

/** The menu at that path; null if there is none. */
QWidget* find_menu(QWidget* window, const std::vector<std::string>& labels) {
  QWidget* menu = window->findChild<display::MenuRow*>();
  for (const std::string& label : labels) {
    QAction* action = menu ? find_action(menu, label) : nullptr;
    menu = action ? action->menu<QMenu*>() : nullptr;
  }
  return menu;
}

std::optional<Question> question_shown() {
  const QMessageBox* const box = open_question();
  if (box == nullptr) return {};
  Question question{box->windowTitle().toStdString(), box->text().toStdString(), {}};
  for (const QAbstractButton* button : box->buttons())
    question.buttons.push_back(without_marks(button->text()).toStdString());
  return question;
}

} // namespace

void press_in_menu(const std::string& key) {
  display::call([key] {
    QWidget* menu = QApplication::activePopupWidget();
    const QKeyCombination keys = combination(key);
    if (menu) QTest::keyClick(menu, keys.key(), keys.keyboardModifiers());
    return true;
  });
}

bool choose(BWindow& window, const std::vector<std::string>& labels) {
  return with_widget(window, [labels](QWidget* widget) {
    const std::vector<std::string> way(labels.begin(), labels.end() - 1);
    auto* menu = qobject_cast<QMenu*>(find_menu(widget, way));
    QAction* action = menu ? find_action(menu, labels.back()) : nullptr;
    if (!action || !action->isEnabled()) return false;
    menu->popup(QPoint(0, 0));
    const QPoint where = menu->actionGeometry(action).center();
    QTest::mouseMove(menu, where);
    QTest::mouseClick(menu, Qt::LeftButton, {}, where);
    menu->close();
    return true;
  });
}

std::vector<MenuLine> menu_lines(BWindow& window, const std::vector<std::string>& labels) {
  return with_widget(window, [labels](QWidget* widget) {
    std::vector<MenuLine> lines;
    const QWidget* menu = find_menu(widget, labels);
    for (const QAction* action : menu ? menu->actions() : QList<QAction*>())
      lines.push_back({without_marks(action->text()).toStdString(), action->isChecked(), action->isEnabled(),
                       action->shortcut().toString(QKeySequence::PortableText).toStdString()});
    return lines;
  });
}

bool popup_is_open() {
  return display::call([] { return QApplication::activePopupWidget() != nullptr; });
}

// Polls only, without running the event loop as `until` does: the asking thread goes on by itself.
Question wait_for_question() {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  std::optional<Question> seen;
  while (!seen && std::chrono::steady_clock::now() < end) {
    std::this_thread::yield();
    seen = display::call(question_shown);
  }
  return seen.value_or(Question());
}

Question question_now() {
  return display::call([] { return question_shown().value_or(Question{}); });
}

bool answer_with_key(const std::string& key) {
  return display::call([key] {
    QMessageBox* box = open_question();
    if (!box) return false;
    send_key(box, key);
    return true;
  });
}

bool answer_with_button(const std::string& label) {
  return display::call([label] {
    const QMessageBox* box = open_question();
    for (QAbstractButton* button : box ? box->buttons() : QList<QAbstractButton*>()) {
      if (without_marks(button->text()) != q(label)) continue;
      QTest::mouseClick(button, Qt::LeftButton);
      return true;
    }
    return false;
  });
}

void type_file_name(BWindow& panel, const std::string& name) {
  with_widget(panel, [name](QWidget* widget) {
    auto* field = widget->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    field->setText(q(name));
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Return);
  });
}

std::string file_name_selected(BWindow& panel) {
  return with_widget(panel, [](QWidget* widget) {
    return widget->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->selectedText().toStdString();
  });
}

std::vector<std::string> panel_texts(BWindow& panel) {
  return with_widget(panel, [](QWidget* widget) {
    std::vector<std::string> texts{widget->windowTitle().toStdString()};
    for (const QPushButton* button : widget->findChildren<QPushButton*>())
      texts.push_back(without_marks(button->text()).toStdString());
    for (const QUrl& place : qobject_cast<QFileDialog*>(widget)->sidebarUrls())
      texts.push_back(place.toLocalFile().toStdString());
    return texts;
  });
}

bool choose_color(const std::string& color, bool accepts) {
  return display::call([&] {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<QColorDialog*>(widget);
      if (dialog == nullptr || !dialog->isVisible()) continue;
      for (QLineEdit* field : dialog->findChildren<QLineEdit*>()) {
        if (!field->text().startsWith(QLatin1Char('#'))) continue;
        field->selectAll();
        QTest::keyClicks(field, q(color));
      }
      QTest::keyClick(dialog, accepts ? Qt::Key_Return : Qt::Key_Escape);
      return true;
    }
    return false;
  });
}

} // namespace hands
