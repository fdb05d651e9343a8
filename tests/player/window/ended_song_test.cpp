#include "player/widgets/shown_text.h"
#include "player/window/cover_view.h"
#include "player/window/player_widget.h"
#include "player/window/seek_bar.h"
#include "tests/support/qt_application.h"
#include "tests/support/testing.h"
#include "tests/support/wav.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QImage>

namespace {

struct EndedSong : testing::Test {
  std::pair<QImage, QImage> Seen() { return {fCover->grab().toImage(), fBar->grab().toImage()}; }
  OwnApplication<QApplication> fApplication;
  TPlayerWidget fPlayer{BMessenger()};
  TCoverView* const fCover = fPlayer.findChild<TCoverView*>();
  TSeekBar* const fBar = fPlayer.findChild<TSeekBar*>();
};

} // namespace

TEST_F(EndedSong, KeepsItsCoverAndWaveformUntilAnotherSongBegins) {
  const ScratchFolder folder;
  QImage red(40, 40, QImage::Format_RGB32);
  red.fill(Qt::red);
  ASSERT_TRUE(red.save(QString::fromStdString(folder.File("cover.png"))));
  TPlayerState state;
  TSongs songs(2);
  songs[0].path = folder.Write("a.wav", beeping_wav(3));
  songs[0].played = true;
  state.songs = std::make_shared<const TSongs>(songs);
  state.durationMs = 3000;
  state.current = 1;
  state.isLoaded = state.isPlaying = true;
  fPlayer.ShowState(state);
  const auto without = Seen();
  state.current = 0;
  fPlayer.ShowState(state);
  QElapsedTimer timer;
  timer.start();
  while ((Seen().first == without.first || Seen().second == without.second) && timer.elapsed() < 10000)
    QApplication::processEvents(QEventLoop::AllEvents, 50);
  const auto playing = Seen();
  EXPECT_EQ(playing.first.pixelColor(42, 42), Qt::red);
  EXPECT_NE(playing.second, without.second);
  state.isLoaded = state.isPlaying = false;
  fPlayer.ShowState(state);
  EXPECT_EQ(Seen(), playing) << "at the end of the playlist";
  state.current = 1;
  state.isLoaded = state.isPlaying = true;
  fPlayer.ShowState(state);
  EXPECT_EQ(Seen(), without);
}
