#include "player/app/open_questions.h"

#include <QApplication>
#include <QDialog>

namespace {

void bring_forward(QDialog* question) {
  // As long as that is minimised the question is hidden too.
  if (const QWidget* const asking = question->parentWidget())
    asking->window()->setWindowState(asking->window()->windowState() & ~Qt::WindowMinimized);
  question->raise();
  question->activateWindow();
}

} // namespace

void raise_open_questions() {
  for (QWidget* const window : QApplication::topLevelWidgets()) {
    auto* const question = qobject_cast<QDialog*>(window);
    if (question && question->isVisible()) bring_forward(question);
  }
}
