#include "platform/interface/alert_peer.h"

#include "platform/display/accelerators.h"
#include "platform/display/convert.h"
#include "platform/display/display_thread.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <chrono>

namespace display {

namespace {

QMessageBox::Icon icon_of(alert_type type) {
  switch (type) {
  case B_INFO_ALERT:
  case B_IDEA_ALERT:
    return QMessageBox::Information;
  case B_WARNING_ALERT:
    return QMessageBox::Warning;
  case B_STOP_ALERT:
    return QMessageBox::Critical;
  case B_EMPTY_ALERT:
    break;
  }
  return QMessageBox::NoIcon;
}

bool moves_focus(int key) {
  constexpr int kKeys[] = {Qt::Key_Tab, Qt::Key_Backtab, Qt::Key_Left, Qt::Key_Right, Qt::Key_Up, Qt::Key_Down};
  return std::ranges::find(kKeys, key) != std::end(kKeys);
}

/** Swallows the space bar until the user has moved the focus. */
class SpaceFilter : public QObject {
public:
  using QObject::QObject;
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::KeyRelease) return false;
    const int key = static_cast<QKeyEvent*>(event)->key();
    fHasMoved |= moves_focus(key);
    return key == Qt::Key_Space && !fHasMoved;
  }

private:
  bool fHasMoved = false;
};

void add_buttons(QMessageBox& box, const AlertText& question) {
  for (size_t i = 0; i < question.buttons.size(); ++i) {
    const QString label = plain_label(question.buttons[i]);
    // With one role for all, the desktop's style does not reorder the buttons.
    QPushButton* button = box.addButton(label, QMessageBox::ActionRole);
    if (const char letter = question.letters[i])
      button->setShortcut(QKeySequence(QChar::fromLatin1(letter).toUpper().unicode()));
    if (static_cast<int32>(i) == question.escapeButton) box.setEscapeButton(button);
    if (static_cast<int32>(i) == question.defaultButton) box.setDefaultButton(button);
  }
}

void show(const AlertText& question, QWidget* window, const std::shared_ptr<Answer<int32>>& answer) {
  auto* box = new QMessageBox(icon_of(question.type), to_qstring(question.caption), to_qstring(question.text),
                              QMessageBox::NoButton, window);
  box->setTextFormat(Qt::PlainText);
  box->setAttribute(Qt::WA_DeleteOnClose);
  add_buttons(*box, question);
  if (question.ignoresSpace) {
    auto* const filter = new SpaceFilter(box);
    for (QAbstractButton* button : box->buttons()) button->installEventFilter(filter);
  }
  QObject::connect(box, &QMessageBox::buttonClicked, box, [box, answer](QAbstractButton* pressed) {
    if (box->parentWidget()) box->parentWidget()->activateWindow(); // if no window manager does
    answer->Give(static_cast<int32>(box->buttons().indexOf(pressed)));
  });
  // The question of a minimised window would be hidden too.
  if (window) window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
  // Window-modal and non-blocking: other windows stay usable, and the display thread continues.
  box->setWindowModality(Qt::WindowModal);
  box->show();
  box->raise();
  box->activateWindow();
}

} // namespace

int32 ask(const AlertText& question, const std::function<QWidget*()>& inFrontOf, bigtime_t limitUs) {
  assert(!is_display_thread()); // it would wait for itself
  auto answer = std::make_shared<Answer<int32>>(question.escapeButton);
  auto waiter = answer->Waiter();
  post([answer, question, inFrontOf] { show(question, inFrontOf ? inFrontOf() : nullptr, answer); });
  answer.reset();
  const bool isBounded = limitUs != B_INFINITE_TIMEOUT;
  const bool isAnswered =
      !isBounded || waiter.wait_for(std::chrono::microseconds(limitUs)) == std::future_status::ready;
  return isAnswered ? waiter.get() : question.escapeButton;
}

void post_alert(const AlertText& notice) {
  post([notice] { show(notice, QApplication::activeWindow(), std::make_shared<Answer<int32>>(notice.escapeButton)); });
}

} // namespace display
