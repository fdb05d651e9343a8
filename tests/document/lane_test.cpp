#include "editviews/view_choices.h"
#include "lane/lane_view.h"
#include "plugin/message_codes.h"
#include "tests/support/editor_fixture.h"

#include <gmock/gmock.h>

using namespace testing;

namespace {

struct LaneInTheEditor : EditorByHand {
  LaneInTheEditor() {
    Open(fFolder.Write("a.lrc", "[00:10:00]one\n[00:12:00]two\n[00:16:00]three\n"));
    Press("Down");
    Press("Ctrl+G");
  }
  BView* View() const { return fWindow->FindView("Lane"); }
  BPoint At(int32 timeMs) const {
    const TLaneRange range{11000, 17000};
    return {static_cast<float>(range.XOf(timeMs, static_cast<double>(View()->Bounds().Width()) + 1)), 60};
  }
  void Drag(int32 fromMs, int32 toMs, const std::string& modifier) {
    SendToView(BMessage(kMsgRefreshInfo)); // shows the lines after an undo
    hands::drag(*fWindow, "Lane", At(fromMs), At(toMs), modifier);
    Settle();
  }
};

} // namespace

TEST_F(LaneInTheEditor, ADraggedTagIsOneStepWithAllLaterOnesWhenCtrlIsHeld) {
  Drag(12000, 13000, "Shift");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]one", MatchesRegex("\\[00:1[23]:[09].\\]two"), "[00:16:00]three"));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]one", "[00:12:00]two", "[00:16:00]three"));
  Drag(12000, 14000, "Ctrl");
  EXPECT_THAT(Lines().back(), MatchesRegex("\\[00:1[78]:[09].\\]three"));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines().back(), "[00:16:00]three") << "one step";
}

TEST_F(LaneInTheEditor, KeysMoveTheTagAndEscapeReturnsToTheLyrics) {
  hands::click(*fWindow, "Lane", At(12000));
  Settle();
  ASSERT_EQ(hands::focused_view(*fWindow), "Lane");
  for (const char* const key : {"Up", "Shift+Up", "-"}) Press(key);
  EXPECT_THAT(Lines(), Contains("[00:12:10]two"));
  EXPECT_THAT(Status(), HasSubstr("[00:12:10]"));
  Press("Ctrl+Down");
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]one", "[00:12:09]two", "[00:15:99]three"));
  Press("Esc");
  EXPECT_EQ(hands::focused_view(*fWindow), "TagInputView");
}

TEST_F(LaneInTheEditor, AClickPlaysFromThereAndOnANeighbourSelectsItsLine) {
  hands::click(*fWindow, "Lane", At(14000));
  EXPECT_TRUE(Until([&] {
    const auto told = fHost->Commands();
    return !told.empty() && told.front().first == kMsgHostSeek && std::abs(told.front().second - 14000) < 30;
  }));
  hands::click(*fWindow, "Lane", At(16000));
  Settle();
  EXPECT_EQ(EditView().CurLine(), 2);
}

TEST_F(LaneInTheEditor, TheLyricsGetTheirRoomBackAndTheChoiceIsKept) {
  EXPECT_TRUE(TViewChoices().showsLane);
  const float height = fWindow->FindView("ScrlView")->Frame().Height();
  Press("Ctrl+E");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_TRUE(View()->IsHidden()) << "in free edit mode no line is selected";
  Press("Ctrl+T");
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_FALSE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height);
  Press("Ctrl+G");
  EXPECT_TRUE(View()->IsHidden());
  EXPECT_EQ(fWindow->FindView("ScrlView")->Frame().Height(), height + 120);
}
