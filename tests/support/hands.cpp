#include "tests/support/hands.h"

#include "platform/app/application.h"
#include "platform/kernel/threads.h"
#include "tests/support/hands_widgets.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QUrl>

#include <chrono>
#include <stdexcept>
#include <thread>

// Of Qt's own test library: the event that precedes a key press, and the shortcut if the key is one's.
Q_GUI_EXPORT bool qt_sendShortcutOverrideEvent(QObject* receiver, ulong timestamp, int key,
                                               Qt::KeyboardModifiers modifiers, const QString& text, bool repeats,
                                               ushort count);

namespace hands {

QKeyCombination combination(const std::string& key) {
  return QKeySequence(q(key), QKeySequence::PortableText)[0];
}

void send_key(QWidget* window, const std::string& key) {
  const QKeyCombination keys = combination(key);
  QTest::keyClick(window->windowHandle(), keys.key(), keys.keyboardModifiers());
}

void wait_for_display() {
  display::call([] {
    QApplication::sendPostedEvents();
    QApplication::processEvents();
    return true;
  });
}

bool until(const std::function<bool()>& isSo) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!isSo()) {
    if (std::chrono::steady_clock::now() > end) return false;
    wait_for_display();
    std::this_thread::yield();
  }
  return true;
}

bool until(BWindow& window, const std::function<bool()>& isSo) {
  return until([&] {
    settle(window);
    return isSo();
  });
}

std::vector<BWindow*> windows_titled(const std::string& title) {
  std::vector<BWindow*> found;
  for (const BMessenger& address : be_app->WindowAddresses()) {
    if (!address.LockTarget()) continue;
    auto* const window = static_cast<BWindow*>(address.Target(nullptr));
    if (window->Title() == title) found.push_back(window);
    window->Unlock();
  }
  return found;
}

BWindow& wait_for_window(const std::string& title) {
  std::vector<BWindow*> found;
  const bool isThere = until([&] {
    found = windows_titled(title);
    return !found.empty() && is_shown(*found.front());
  });
  if (!isThere) throw std::runtime_error("no window " + title);
  return *found.front();
}

void settle(BWindow& window) {
  for (int quiet = 0; quiet < 3; ++quiet) {
    wait_for_display();
    if (window.DeliverAll() > 0) quiet = -1;
  }
}

void press(BWindow& window, const std::string& key) {
  with_widget(window, [key](QWidget* widget) { send_key(widget, key); });
}

void hold(BWindow& window, const std::string& key, int agoMs, int heldMs) {
  with_widget(window, [=](QWidget* widget) {
    const QKeyCombination keys = combination(key);
    const auto pressedMs = static_cast<quint64>(system_time() / 1000 - agoMs);
    const QString text = q(key == "Space" ? " " : key);
    const bool isShortcut = qt_sendShortcutOverrideEvent(widget->focusWidget(), pressedMs, keys.key(),
                                                         keys.keyboardModifiers(), text, false, 1);
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
      if (isShortcut && type == QEvent::KeyPress) continue;
      QKeyEvent event(type, keys.key(), keys.keyboardModifiers(), text);
      event.setTimestamp(type == QEvent::KeyPress ? pressedMs : pressedMs + static_cast<quint64>(heldMs));
      QApplication::sendEvent(widget->focusWidget(), &event);
    }
  });
}

void repeat(BWindow& window, const std::string& key) {
  with_widget(window, [key](QWidget* widget) {
    const QKeyCombination keys = combination(key);
    QKeyEvent event(QEvent::KeyPress, keys.key(), keys.keyboardModifiers(), q(key == "Space" ? " " : key), true);
    QApplication::sendEvent(widget->focusWidget(), &event);
  });
}

void click(BWindow& window, const std::string& view, BPoint where, int times) {
  with_widget(window, [view, where, times](QWidget* widget) {
    QWidget* control = control_of(widget, view);
    if (auto* area = qobject_cast<QAbstractScrollArea*>(control)) control = area->viewport();
    const QPoint point(qRound(where.x), qRound(where.y));
    QTest::mouseClick(control, Qt::LeftButton, {}, point);
    if (times == 2) QTest::mouseDClick(control, Qt::LeftButton, {}, point);
  });
}

void drag(BWindow& window, const std::string& view, BPoint from, BPoint to, const std::string& modifier) {
  with_widget(window, [=](QWidget* widget) {
    QWidget* const control = control_of(widget, view);
    const Qt::KeyboardModifiers held = modifier == "Ctrl"    ? Qt::ControlModifier
                                       : modifier == "Shift" ? Qt::ShiftModifier
                                                             : Qt::NoModifier;
    const QPoint start(qRound(from.x), qRound(from.y));
    const QPoint end(qRound(to.x), qRound(to.y));
    QTest::mousePress(control, Qt::LeftButton, held, start);
    QMouseEvent move(QEvent::MouseMove, end, control->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, held);
    QCoreApplication::sendEvent(control, &move);
    QTest::mouseRelease(control, Qt::LeftButton, held, end);
  });
}

void select_tab(BWindow& window, const std::string& view, int index) {
  with_widget(window, [view, index](QWidget* widget) {
    QTabBar* const bar = qobject_cast<QTabWidget*>(control_of(widget, view))->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(index).center());
  });
}

void press_close_button(BWindow& window) {
  with_widget(window, [](QWidget* widget) { return widget->close(); });
}

void resize_by_hand(BWindow& window, int width, int height) {
  with_widget(window, [=](QWidget* widget) { widget->resize(width, height); });
}

void move_by_hand(BWindow& window, int x, int y) {
  with_widget(window, [=](QWidget* widget) { widget->setGeometry(QRect(QPoint(x, y), widget->size())); });
}

void drop_files(BWindow& window, BPoint where, const std::vector<std::string>& paths) {
  with_widget(window, [=](QWidget* widget) {
    QMimeData files;
    QList<QUrl> urls;
    for (const std::string& path : paths) urls << QUrl::fromLocalFile(q(path));
    files.setUrls(urls);
    const QPoint point(qRound(where.x), qRound(where.y));
    // To the native window, as the desktop does: Qt finds the widget at that place.
    QDragEnterEvent enter(point, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(widget->windowHandle(), &enter);
    QDragMoveEvent move(point, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(widget->windowHandle(), &move);
    QDropEvent drop(point, Qt::CopyAction, &files, Qt::LeftButton, {});
    QApplication::sendEvent(widget->windowHandle(), &drop);
  });
}

void paste(BWindow& window, const std::string& text) {
  with_widget(window, [text](QWidget* widget) {
    QApplication::clipboard()->setText(q(text));
    send_key(widget, "Ctrl+V");
  });
}

void compose(BWindow& window, const std::string& preedit, const std::string& commit) {
  with_widget(window, [=](QWidget* widget) {
    QInputMethodEvent composing(q(preedit), {});
    QApplication::sendEvent(widget->focusWidget(), &composing);
    QInputMethodEvent done;
    done.setCommitString(q(commit));
    QApplication::sendEvent(widget->focusWidget(), &done);
  });
}

void compose_over(BWindow& window, const std::string& commit, int from, int length) {
  with_widget(window, [=](QWidget* widget) {
    QInputMethodEvent done;
    done.setCommitString(q(commit), from, length);
    QApplication::sendEvent(widget->focusWidget(), &done);
  });
}

void rest_mouse_on(BWindow& window, const std::string& view) {
  with_widget(window, [view](QWidget* widget) {
    QWidget* control = control_of(widget, view);
    const QPoint where = control->rect().center();
    QHelpEvent resting(QEvent::ToolTip, where, control->mapToGlobal(where));
    return QApplication::sendEvent(control, &resting);
  });
}

} // namespace hands
