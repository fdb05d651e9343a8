#include "hostlink/sonivo_window.h"
#include "platform/interface/screen.h"
#include "tests/support/editor_world.h"
#include "tests/support/hands.h"
#include "tests/support/own_looper.h"
#include "toolkit/placement.h"
#include "window/editor_window.h"

TEST(FrameBeside, TakesTheSideWithRoomAndStaysOnTheScreen) {
  const struct {
    BRect player;
    BRect editor;
  } rows[] = {
      {{60, 80, 500, 480}, {508, 80, 1068, 480}},  {{700, 80, 1200, 480}, {132, 80, 692, 480}},
      {{300, 80, 1000, 480}, {300, 80, 860, 480}}, {{60, 700, 500, 1100}, {508, 399, 1068, 799}},
      {{-500, -50, 100, 480}, {108, 0, 668, 400}},
  };
  constexpr BRect kScreen{0, 0, 1279, 799};
  for (const auto& row : rows) EXPECT_EQ(frame_beside(row.player, 560, 400, kScreen), row.editor) << row.player.left;
  EXPECT_EQ(frame_beside({0, 0, 100, 100}, 5000, 5000, kScreen).LeftTop(), (BPoint{0, 0}));
}

/** The player's window is on the screen when the editor's opens. */
struct Following : EditorWorld {
  struct PlayerWindow : BWindow {
    explicit PlayerWindow(const char* title = "Sonivo - Song") : BWindow({100, 100, 299, 199}, title) {
      SetRunsOnShow(false);
    }
  };
  Following() {
    SetPref([](TPrefValues* values) { values->pollIntervalUs = 100000000; });
    fPlayer->Show();
    hands::settle(*fPlayer);
    MakeEditor({320, 100, 719, 399});
    fEditor->Show();
    Settle();
  }
  void MakeEditor(BRect frame) {
    fEditor.reset(); // before there is another one
    fEditor.reset(new TVesmoEWin(frame, fManager.get()));
    fEditor->SetRunsOnShow(false);
  }
  void Settle() {
    hands::settle(*fPlayer);
    if (fEditor) hands::settle(*fEditor);
  }
  OwnLooper<BWindow> fPlayer{new PlayerWindow};
  OwnLooper<BLooper> fManager{new BLooper("manager")};
  OwnLooper<TVesmoEWin> fEditor;
};

TEST_F(Following, MoveOfTheEditorWithNoButtonHeldOutlastsTheNextMoveOfThePlayer) {
  const auto offset_at = [this](int x, int y) {
    hands::move_by_hand(*fPlayer, x, y);
    Settle();
    return fEditor->Frame().LeftTop() - fPlayer->Frame().LeftTop();
  };
  const BPoint atFirst = fEditor->Frame().LeftTop() - fPlayer->Frame().LeftTop();
  EXPECT_EQ(offset_at(150, 130), atFirst);
  hands::move_by_hand(*fEditor, 300, 140);
  Settle();
  EXPECT_EQ(offset_at(120, 150), (BPoint{150, 10}));
  fEditor.reset();
  hands::move_by_hand(*fPlayer, 150, 130);
  Settle();
  EXPECT_EQ(fPlayer->Frame().LeftTop(), (BPoint{150, 130})) << "the player goes on";
}

TEST_F(Following, WindowThatNoScreenShowsOpensBesideThePlayer) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const BRect& lost : {BRect{5000, 5000, 5400, 5300}, BRect{20, 20, 400, nan}, BRect{-900, 20, -500, 400}}) {
    MakeEditor(lost);
    EXPECT_EQ(fEditor->Frame(), frame_beside(fPlayer->Frame(), 560, 400, screen_frame(fPlayer->Frame().LeftTop())));
  }
  EXPECT_TRUE(is_in_sight({-300, 20, 100, 400})) << "its right end can be taken hold of";
}

TEST_F(Following, PlayersWindowMayBeLookedForWhileOthersComeAndGo) {
  std::atomic<bool> ended{false};
  std::thread others([&] {
    for (int i = 0; i < 100; ++i) OwnLooper<BWindow>(new PlayerWindow("other"))->Show();
    ended = true;
  });
  BRect frame;
  do EXPECT_EQ(get_sonivo_win_frame(&frame), B_OK);
  while (!ended); // at least once, however late this thread comes to it
  others.join();
  EXPECT_EQ(frame, fPlayer->Frame());
  fPlayer.reset();
  EXPECT_NE(get_sonivo_win_frame(&frame), B_OK);
}
