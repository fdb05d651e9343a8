#include "tests/display/hands.h"
#include "tests/editor/editor_world.h"
#include "window/editor_window.h"
#include "window/placement.h"

#include <limits>

/** The player's window is on the screen when the editor's opens. */
class Following : public EditorWorld {
protected:
  struct PlayerWindow : BWindow {
    PlayerWindow() : BWindow({100, 100, 299, 199}, "Sonivo - Song") { SetRunsOnShow(false); }
  };
  Following() : fPlayer(new PlayerWindow), fManager(new BLooper("manager")) {
    SetPref([](TPrefValues* values) { values->pollIntervalUs = 100000000; });
    fPlayer->Show();
    hands::settle(*fPlayer);
    fEditor = new TVesmoEWin({320, 100, 719, 399}, fManager);
    fEditor->SetRunsOnShow(false);
    fEditor->Show();
    Settle();
  }
  ~Following() override {
    for (BLooper* looper : {static_cast<BLooper*>(fEditor), static_cast<BLooper*>(fPlayer), fManager})
      if (looper && looper->Lock()) looper->Quit();
  }
  void Settle() {
    hands::settle(*fPlayer);
    if (fEditor) hands::settle(*fEditor);
  }
  PlayerWindow* fPlayer;
  BLooper* fManager;
  TVesmoEWin* fEditor;
};

TEST_F(Following, EditorKeepsItsPlaceBesideThePlayer) {
  const BPoint apart = fEditor->Frame().LeftTop() - fPlayer->Frame().LeftTop();
  for (const int x : {150, 40}) {
    hands::move_by_hand(*fPlayer, x, 130);
    Settle();
    EXPECT_EQ(fEditor->Frame().LeftTop() - fPlayer->Frame().LeftTop(), apart);
  }
}

TEST_F(Following, PlayerGoesOnWhenTheEditorIsGone) {
  fEditor->Lock();
  fEditor->Quit();
  fEditor = nullptr;
  hands::move_by_hand(*fPlayer, 150, 130);
  Settle();
  EXPECT_EQ(fPlayer->Frame().LeftTop(), (BPoint{150, 130}));
}

TEST_F(Following, WindowThatNoScreenShowsOpensBesideThePlayer) {
  const float nan = std::numeric_limits<float>::quiet_NaN();
  for (const BRect& lost : {BRect{5000, 5000, 5400, 5300}, BRect{20, 20, 400, nan}, BRect{-900, 20, -500, 400}}) {
    fEditor->Lock();
    fEditor->Quit();
    fEditor = new TVesmoEWin(lost, fManager);
    fEditor->SetRunsOnShow(false);
    EXPECT_GT(fEditor->Frame().left, 0);
    EXPECT_LT(fEditor->Frame().left, 799);
    EXPECT_EQ(fEditor->Frame().Width(), 560);
  }
  EXPECT_TRUE(is_in_sight({-300, 20, 100, 400})) << "its right end can be taken hold of";
}
