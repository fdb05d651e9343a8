#include "player/app/open_questions.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>

TEST(OpenQuestions, AreBroughtForwardWithTheWindowThatAsked) {
  int count = 1;
  char name[] = "test";
  char* words[] = {name, nullptr};
  const QApplication application(count, words);
  QWidget asking;
  QWidget other;
  QMessageBox question(&asking);
  question.setWindowModality(Qt::WindowModal);
  QMessageBox hidden;
  for (QWidget* window : {&asking, static_cast<QWidget*>(&question), &other}) window->show();
  asking.setWindowState(Qt::WindowMinimized);
  other.activateWindow();
  QApplication::processEvents();
  ASSERT_EQ(QApplication::activeWindow(), &other);
  raise_open_questions();
  QApplication::processEvents();
  EXPECT_EQ(QApplication::activeWindow(), &question);
  EXPECT_FALSE(asking.isMinimized());
  EXPECT_FALSE(hidden.isVisible());
}
