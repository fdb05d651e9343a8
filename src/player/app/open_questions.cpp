#include "player/app/open_questions.h"

#include "player/model/display_thread_check.h"

#include <QApplication>
#include <QDialog>

namespace {

void bring_forward(QDialog* question) {
  // A minimised parent hides its dialog.
  if (const QWidget* const asking = question->parentWidget())
    asking->window()->setWindowState(asking->window()->windowState() & ~Qt::WindowMinimized);
  question->raise();
  question->activateWindow();
}

} // namespace

void raise_open_questions() {
  check_display_thread();
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const question = qobject_cast<QDialog*>(window);
    if (question && question->isVisible()) bring_forward(question);
  }
}
