#include "player/window/seek_bar.h"
#include "tests/support/qt_application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QMouseEvent>

namespace {

constexpr int32 kDurationMs = 100000;

struct SeekBar : testing::Test {
  SeekBar() {
    fBar.resize(506, 58); // 500 points for 100 s
    TPlayerState state;
    state.current = 0;
    state.durationMs = kDurationMs;
    state.marksMs = std::make_shared<std::vector<int32>>(std::vector<int32>{20050, 20090, 60000});
    fBar.ShowSong(state);
    QObject::connect(&fBar, &QSlider::valueChanged, [this](int value) { fRequests.push_back(value); });
  }

  void Mouse(QEvent::Type type, double x, double y) {
    const bool up = type == QEvent::MouseButtonRelease;
    QMouseEvent event(type, {x, y}, {x, y}, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      up ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&fBar, &event);
  }
  void Click(double x, double y) {
    Mouse(QEvent::MouseButtonPress, x, y);
    Mouse(QEvent::MouseButtonRelease, x, y);
  }

  const OwnApplication<QApplication> fApplication;
  TSeekBar fBar;
  std::vector<int> fRequests;
};

constexpr double kInWave = 20;
constexpr double kInMarks = 54;

} // namespace

TEST_F(SeekBar, AClickOnAMarkSeeksToItExactlyAndElsewhereToThatPosition) {
  Click(3 + 100, kInMarks);
  Click(3 + 302, kInMarks);
  Click(3 + 302, kInWave);
  Click(3 + 250, kInMarks); // no mark is near
  Click(-50, kInWave);
  EXPECT_THAT(fRequests, testing::ElementsAre(20050, 60000, 60400, 50000, 0));
}

TEST_F(SeekBar, OnlyTheUserSeeks) {
  fBar.ShowPosition(30000);
  EXPECT_TRUE(fRequests.empty());
  EXPECT_EQ(fBar.value(), 30000);
  Mouse(QEvent::MouseButtonPress, 3 + 100, kInWave);
  fBar.ShowPosition(31000);
  Mouse(QEvent::MouseMove, 3 + 200, kInWave);
  EXPECT_TRUE(fRequests.empty()) << "while it is dragged the song plays on";
  Mouse(QEvent::MouseButtonRelease, 3 + 200, kInWave);
  EXPECT_THAT(fRequests, testing::ElementsAre(40000));
}
