#include "player/window/seek_bar.h"
#include "tests/support/qt_application.h"
#include "tests/support/testing.h"

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

TEST_F(SeekBar, ThePlayedPartStandsOutInADarkTheme) {
  QPalette dark;
  dark.setColor(QPalette::Window, QColor(0x20, 0x20, 0x20));
  dark.setColor(QPalette::WindowText, Qt::white);
  dark.setColor(QPalette::Highlight, QColor(0x10, 0x20, 0x60));
  fBar.setPalette(dark);
  fBar.ShowLoudness(std::vector<unsigned char>(500, 255));
  fBar.ShowPosition(kDurationMs / 2);
  const QImage picture = fBar.grab().toImage();
  const auto lightest = [&](int from, int to) {
    int most = 0;
    for (int x = from; x < to; ++x) most = std::max(most, picture.pixelColor(x, 10).lightness());
    return most;
  };
  EXPECT_GT(lightest(50, 200), lightest(300, 450));
}

TEST_F(SeekBar, ThousandsOfMarksShowWhereTheyAreDense) {
  TPlayerState state;
  state.current = 0;
  state.durationMs = kDurationMs;
  std::vector<int32> marks;
  for (int i = 0; i < 2000; ++i) marks.push_back(10000 + i * 10);
  for (int i = 0; i < 100; ++i) marks.push_back(50000 + i * 400);
  state.marksMs = std::make_shared<std::vector<int32>>(marks);
  fBar.ShowSong(state);
  const QImage picture = fBar.grab().toImage();
  const auto darkness = [&](int from, int to) {
    int sum = 0;
    for (int x = from; x < to; ++x) sum += 255 - picture.pixelColor(x, 53).lightness();
    return sum / (to - from);
  };
  EXPECT_GT(darkness(60, 140), 2 * darkness(260, 440));
  EXPECT_GT(darkness(260, 440), darkness(460, 500)) << "no marks there";
}
