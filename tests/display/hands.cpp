#include "tests/display/hands.h"

#include "platform/display/display_thread.h"
#include "platform/display/menu_widgets.h"
#include "platform/display/window_peer.h"
#include "platform/interface/window.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QColorDialog>
#include <QDragEnterEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenuBar>
#include <QMessageBox>
#include <QMetaEnum>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QToolTip>
#include <QUrl>

#include <chrono>
#include <thread>

namespace hands {

namespace {

QString q(const std::string& text) {
  return QString::fromStdString(text);
}

/** Runs on the display thread with the window's widget. */
template <class Act>
auto with_widget(BWindow& window, Act act) {
  return display::call([find = window.Peer()->Finder(), act] { return act(find()); });
}

QWidget* control_of(QWidget* window, const std::string& view) {
  return window->findChild<QWidget*>(q(view));
}

QKeyCombination combination(const std::string& key) {
  return QKeySequence(q(key), QKeySequence::PortableText)[0];
}

void send_key(QWidget* window, const std::string& key) {
  const QKeyCombination keys = combination(key);
  QTest::keyClick(window->windowHandle(), keys.key(), keys.keyboardModifiers());
}

QMessageBox* open_question() {
  for (QWidget* widget : QApplication::topLevelWidgets())
    if (auto* box = qobject_cast<QMessageBox*>(widget); box && box->isVisible()) return box;
  return nullptr;
}

/** A text as the user reads it. */
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

/** The menu widget that the labels lead to; null when they lead nowhere. */
QWidget* find_menu(QWidget* window, const std::vector<std::string>& labels) {
  QWidget* menu = window->findChild<display::MenuRow*>();
  for (const std::string& label : labels) {
    QAction* action = menu ? find_action(menu, label) : nullptr;
    menu = action ? action->menu<QMenu*>() : nullptr;
  }
  return menu;
}

} // namespace

void wait_for_display() {
  display::call([] {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
    return true;
  });
}

bool until(const std::function<bool()>& isSo) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!isSo() && std::chrono::steady_clock::now() < end) {
    wait_for_display();
    std::this_thread::yield();
  }
  return isSo();
}

void settle(BWindow& window) {
  for (int quiet = 0; quiet < 3; ++quiet) {
    wait_for_display();
    if (window.DeliverAll() > 0) quiet = -1;
  }
}

void press(BWindow& window, const std::string& key) {
  with_widget(window, [key](QWidget* widget) {
    send_key(widget, key);
    return true;
  });
}

void repeat(BWindow& window, const std::string& key) {
  with_widget(window, [key](QWidget* widget) {
    const QKeyCombination keys = combination(key);
    QKeyEvent event(QEvent::KeyPress, keys.key(), keys.keyboardModifiers(), q(key == "Space" ? " " : key), true);
    QApplication::sendEvent(widget->focusWidget(), &event);
    return true;
  });
}

void click(BWindow& window, const std::string& view, BPoint where, int times) {
  with_widget(window, [view, where, times](QWidget* widget) {
    QWidget* control = control_of(widget, view);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(control)) control = area->viewport();
    const QPoint point(qRound(where.x), qRound(where.y));
    QTest::mouseClick(control, Qt::LeftButton, {}, point);
    if (times == 2) QTest::mouseDClick(control, Qt::LeftButton, {}, point);
    return true;
  });
}

void press_close_button(BWindow& window) {
  with_widget(window, [](QWidget* widget) { return widget->close(); });
}

void resize_by_hand(BWindow& window, int width, int height) {
  with_widget(window, [=](QWidget* widget) {
    widget->resize(width, height);
    return true;
  });
}

void move_by_hand(BWindow& window, int x, int y) {
  with_widget(window, [=](QWidget* widget) {
    widget->setGeometry(QRect(QPoint(x, y), widget->size()));
    return true;
  });
}

void drop_files(BWindow& window, BPoint where, const std::vector<std::string>& paths, bool fromThisProgram) {
  with_widget(window, [=](QWidget* widget) {
    QMimeData files;
    QList<QUrl> urls;
    for (const std::string& path : paths) urls << QUrl::fromLocalFile(q(path));
    files.setUrls(urls);
    const QPoint point(qRound(where.x), qRound(where.y));
    if (!fromThisProgram) {
      QDragEnterEvent enter(point, Qt::CopyAction, &files, Qt::LeftButton, {});
      QApplication::sendEvent(widget, &enter);
    }
    QDropEvent drop(point, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(widget, &drop);
    return true;
  });
}

void paste(BWindow& window, const std::string& text) {
  with_widget(window, [text](QWidget* widget) {
    QApplication::clipboard()->setText(q(text));
    send_key(widget, "Ctrl+V");
    return true;
  });
}

void compose(BWindow& window, const std::string& preedit, const std::string& commit) {
  with_widget(window, [=](QWidget* widget) {
    QInputMethodEvent composing(q(preedit), {});
    QApplication::sendEvent(widget->focusWidget(), &composing);
    QInputMethodEvent done;
    done.setCommitString(q(commit));
    QApplication::sendEvent(widget->focusWidget(), &done);
    return true;
  });
}

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

Question wait_for_question() {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
  while (std::chrono::steady_clock::now() < end) {
    auto seen = display::call([]() -> std::unique_ptr<Question> {
      const QMessageBox* box = open_question();
      if (!box) return nullptr;
      auto question = std::make_unique<Question>();
      question->caption = box->windowTitle().toStdString();
      question->text = box->text().toStdString();
      for (const QAbstractButton* button : box->buttons())
        question->buttons.push_back(without_marks(button->text()).toStdString());
      return question;
    });
    if (seen) return *seen;
    std::this_thread::yield();
  }
  return {};
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

std::string row_text(BWindow& window, const std::string& list, int row) {
  return with_widget(window, [=](QWidget* widget) {
    const auto* model = qobject_cast<QListView*>(control_of(widget, list))->model();
    return model->data(model->index(row, 0), Qt::AccessibleTextRole).toString().toStdString();
  });
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

void rest_mouse_on(BWindow& window, const std::string& view) {
  with_widget(window, [view](QWidget* widget) {
    QWidget* control = control_of(widget, view);
    const QPoint where = control->rect().center();
    QHelpEvent resting(QEvent::ToolTip, where, control->mapToGlobal(where));
    return QApplication::sendEvent(control, &resting);
  });
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

void type_file_name(BWindow& panel, const std::string& name) {
  with_widget(panel, [name](QWidget* widget) {
    auto* field = widget->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    field->setText(q(name));
    field->setFocus();
    QTest::keyClick(field, Qt::Key_Return);
    return true;
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

bool popup_is_open() {
  return display::call([] { return QApplication::activePopupWidget() != nullptr; });
}

std::string file_name_selected(BWindow& panel) {
  return with_widget(panel, [](QWidget* widget) {
    return widget->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->selectedText().toStdString();
  });
}

bool is_shown(BWindow& window) {
  return with_widget(window, [](QWidget* widget) { return widget->isVisible(); });
}

} // namespace hands
