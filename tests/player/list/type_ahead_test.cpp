#include "player/list/type_ahead.h"

#include "tests/support/qt_application.h"
#include "tests/support/testing.h"

#include <QApplication>
#include <QKeyEvent>

using namespace testing;

namespace {

struct TypeAhead : testing::Test {
  TypeAhead() {
    fKeys.SetCommands("NPM", [this](Qt::Key key, int) { fCommands.push_back(static_cast<char>(key)); });
  }
  void Type(const char* text) {
    for (const QChar c : QString(text)) Press(c.toUpper().unicode(), QString(c));
  }
  bool Press(int key, const QString& text, Qt::KeyboardModifiers held = Qt::NoModifier) {
    const QKeyEvent event(QEvent::KeyPress, key, held, text);
    const bool isTaken = fKeys.Takes(event);
    EXPECT_EQ(fKeys.Press(event), isTaken);
    return isTaken;
  }

  const OwnApplication<QApplication> fApplication;
  std::vector<std::string> fFound;
  std::vector<char> fCommands;
  TTypeAhead fKeys{[this](const QString& typed) { fFound.push_back(typed.toStdString()); }};
};

} // namespace

TEST_F(TypeAhead, ATypedNameRunsNoCommand) {
  Type("no + pump");
  EXPECT_EQ(fFound.front(), "no");
  EXPECT_EQ(fFound.back(), "no + pump");
  EXPECT_FALSE(Press(Qt::Key_Escape, "\x1b"));
  EXPECT_THAT(fCommands, IsEmpty());
}

TEST_F(TypeAhead, ALetterAloneIsTheCommandAsSoonAsNoOtherFollows) {
  Type("n");
  EXPECT_THAT(fCommands, IsEmpty()) << "a name may follow";
  while (fCommands.empty()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  Type("ppm");
  EXPECT_THAT(fCommands, ElementsAre('N', 'P')) << "the second P may begin a name, the first did not";
  EXPECT_THAT(fFound, ElementsAre("pm"));
  Press(Qt::Key_Down, "");
  Type("m");
  Press(Qt::Key_Return, "\r");
  EXPECT_THAT(fCommands, ElementsAre('N', 'P', 'M')) << "before the next key acts";
}

TEST_F(TypeAhead, SignsAndShortcutsAreLeftToTheWindow) {
  EXPECT_FALSE(Press(Qt::Key_Space, " "));
  EXPECT_FALSE(Press(Qt::Key_Plus, "+"));
  EXPECT_FALSE(Press(Qt::Key_N, "n", Qt::ControlModifier));
  EXPECT_TRUE(Press(Qt::Key_Q, "q"));
  EXPECT_TRUE(Press(Qt::Key_Space, " "));
  EXPECT_THAT(fFound, ElementsAre("q", "q "));
}
