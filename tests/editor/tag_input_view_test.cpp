#include "editviews/tag_input_view.h"

#include "platform/interface/window.h"
#include "plugin/front_end_receiver.h"
#include "plugin/host_link.h"
#include "tests/display/hands.h"
#include "tests/editor/editor_world.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

class ViewWindow : public BWindow {
public:
  explicit ViewWindow(Sonivo_FrontEnd* link) : BWindow({10, 10, 409, 309}, "view") {
    SetRunsOnShow(false);
    fView = new TTagInputView({0, 0, 399, 299}, link);
    AddChild(fView);
    fView->MakeFocus();
  }
  void MessageReceived(BMessage* message) override {
    if (message->what == kMsgStampHint) fHints.push_back(*message);
    if (message->what != kMsgStatBarStr) return BWindow::MessageReceived(message);
    message->FindString("StatBarStr", &fReport);
  }
  TTagInputView* fView;
  std::string fReport = "none";
  std::vector<BMessage> fHints;
};

class TagInputView : public EditorWorld {
protected:
  TagInputView() {
    fLink = std::make_unique<Sonivo_FrontEnd>(false, 100000);
    fLink->Start();
    while (fHost->fHandshakes == 0) snooze(1000);
    fWindow = new ViewWindow(fLink.get());
    fView = fWindow->fView;
    fWindow->Show();
    hands::settle(*fWindow);
  }
  ~TagInputView() override {
    fWindow->Lock();
    fWindow->Quit();
    fLink.reset();
  }
  void Show(const std::list<std::string>& lines, int32 selected = 0) {
    fView->SetLines(lines);
    fView->SetCurLine(selected);
    fView->SetModified(false);
    hands::settle(*fWindow);
  }
  void PlayAt(int32 positionMs) {
    EditorWorld::PlayAt(positionMs, "song", [this] { fLink->Refresh(); });
  }
  /** Presses the key with the song at that moment. */
  void Press(const std::string& key, int32 positionMs = 0) {
    PlayAt(positionMs);
    hands::press(*fWindow, key);
    hands::settle(*fWindow);
  }
  std::list<std::string> Lines() const {
    std::list<std::string> lines;
    fView->GetLines(&lines);
    return lines;
  }
  std::unique_ptr<Sonivo_FrontEnd> fLink;
  ViewWindow* fWindow;
  TTagInputView* fView;
};

} // namespace

TEST_F(TagInputView, AReplacedTagTakesTheModesForm) {
  Show({"[00:10]a", "[00:10:50]b"});
  Press("Space", 9000);
  EXPECT_EQ(Lines().front(), "[00:09:00]a");
  EXPECT_EQ(fWindow->fReport, "Line 1: tag replaced, moved by -1000 ms");
  fView->SetMode(1);
  Press("Space", 11999);
  EXPECT_EQ(Lines().back(), "[00:11]b");
  EXPECT_EQ(fWindow->fReport, "Line 2: tag replaced, moved by 1499 ms") << "before it is cut to the form";
}

TEST_F(TagInputView, OffsetIsAddedAndStopsAtZero) {
  SetPref([](TPrefValues* values) { values->timeOffsetMs = -500; });
  Show({"a", "b"});
  Press("Space", 300);
  Press("Space", 1500);
  EXPECT_THAT(Lines(), ElementsAre("[00:00:00]a", "[00:01:00]b"));
}

TEST_F(TagInputView, AHeldSpaceBarStampsOnce) {
  Show({"a", "b", "c"});
  PlayAt(1000);
  hands::press(*fWindow, "Space");
  hands::repeat(*fWindow, "Space");
  hands::repeat(*fWindow, "Space");
  hands::settle(*fWindow);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "b", "c"));
}

TEST_F(TagInputView, PlusAndMinusMoveTheTagInItsOwnForm) {
  Show({"[00:10]a", "[00:10:00]b", "c"});
  Press("+");
  EXPECT_EQ(fWindow->fReport, "Tag moved by 1000[ms]");
  fView->SetCurLine(1);
  Press("-");
  EXPECT_EQ(fWindow->fReport, "Tag moved by -10[ms]");
  EXPECT_THAT(Lines(), ElementsAre("[00:11]a", "[00:09:99]b", "c"));
  EXPECT_EQ(fView->CurLine(), 1);
  fWindow->fReport = "none";
  fView->SetCurLine(2);
  fView->SetModified(false);
  Press("+");
  EXPECT_EQ(fWindow->fReport, "none") << "a line without a tag";
  EXPECT_FALSE(fView->IsModified());
}

TEST_F(TagInputView, NudgingStopsAtTheBoundButReportsItsStep) {
  Show({"[00:00:00]a"});
  Press("-");
  EXPECT_THAT(Lines(), ElementsAre("[00:00:00]a"));
  EXPECT_EQ(fWindow->fReport, "Tag moved by -10[ms]");
}

TEST_F(TagInputView, DeleteTakesTheTagOffAndAlwaysMarks) {
  Show({"[00:10]a", "b"});
  Press("Delete");
  fView->SetCurLine(1);
  fView->SetModified(false);
  Press("Delete");
  EXPECT_THAT(Lines(), ElementsAre("a", "b"));
  EXPECT_TRUE(fView->IsModified());
  EXPECT_EQ(fWindow->fReport, "Tag removed from line 2");
}

TEST_F(TagInputView, WithoutASelectionNothingHappens) {
  fView->Clear();
  hands::settle(*fWindow);
  for (const char* key : {"Space", "+", "Delete"}) Press(key);
  EXPECT_FALSE(fView->IsModified());
  EXPECT_EQ(fWindow->fReport, "none");
  EXPECT_EQ(fView->CurLine(), -1);
}

TEST_F(TagInputView, AHundredThousandLinesComeAndGo) {
  std::list<std::string> lines;
  for (int i = 0; i < 100000; ++i) lines.push_back("line " + std::to_string(i));
  Show(lines, 99999);
  Press("Space", 5000);
  EXPECT_EQ(Lines().back(), "[00:05:00]line 99999");
  Show({"x"});
  EXPECT_THAT(Lines(), ElementsAre("x"));
}

TEST_F(TagInputView, LineOutOfRangeIsHarmless) {
  Show({"a", "b"}, 1);
  fView->SetCurLine(7);
  fView->SetCurLine(-3);
  EXPECT_EQ(fView->CurLine(), 1);
}

TEST_F(TagInputView, RowsAreAsHighAsTheFontOfTheSettings) {
  Show({"a", "日本語"});
  const float before = fView->ItemFrame(0).Height();
  SetPref([](TPrefValues* values) { values->fontSize *= 2; });
  fView->SetAppearance();
  hands::settle(*fWindow);
  EXPECT_GT(fView->ItemFrame(0).Height(), 1.6F * before);
  EXPECT_EQ(fView->ItemFrame(1).top, fView->ItemFrame(0).bottom + 1);
}

TEST_F(TagInputView, AHeldPlusGoesOn) {
  Show({"[00:01:00]a"});
  Press("+");
  for (int i = 0; i < 3; ++i) hands::repeat(*fWindow, "+");
  hands::settle(*fWindow);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:04]a"));
}

TEST_F(TagInputView, WhoKeepsMovingFreshStampsEarlierIsToldOnceHowLateTheyAre) {
  SetPref([](TPrefValues* values) { values->timeOffsetMs = 10; });
  Show(std::list<std::string>(8, "a"));
  for (int32 row = 0; row < 8; ++row) {
    Press("Space", 5000 + 1000 * row);
    EXPECT_EQ(fWindow->fReport, "Tag set at line " + std::to_string(row + 1));
    fView->SetCurLine(row);
    for (int step = 0; step < 4; ++step) {
      Press("-");
      const bool isNew = row == 5 && step == 0;
      EXPECT_EQ(fWindow->fReport,
                std::string("Tag moved by -10[ms]") + (isNew ? "   Your stamps are about 40 ms late" : ""));
    }
    fView->SetCurLine(row + 1);
  }
  ASSERT_EQ(fWindow->fHints.size(), 1U);
  int32 latenessMs = 0;
  int32 offsetMs = 0;
  EXPECT_EQ(fWindow->fHints[0].FindInt32("LateMs", &latenessMs), B_OK);
  EXPECT_EQ(fWindow->fHints[0].FindInt32("TmDf", &offsetMs), B_OK);
  EXPECT_EQ(std::pair(latenessMs, offsetMs), std::pair(40, 10));
}
