#include "editviews/tag_input_view.h"

#include "language/llt.h"
#include "platform/app/message.h"
#include "plugin/host_link.h"
#include "plugin/pref.h"
#include "tests/editor/editor_fixture.h"

#include <gmock/gmock.h>

#include <thread>

using testing::ElementsAre;

namespace {

/** Keeps the reports of the view that it shows. */
class ReportWindow : public BWindow {
public:
  ReportWindow() : BWindow({50, 50, 449, 249}, "reports") { SetRunsOnShow(false); }
  void MessageReceived(BMessage* message) override {
    std::string text;
    if (message->what != kMsgStatBarStr) return BWindow::MessageReceived(message);
    EXPECT_EQ(message->FindString("StatBarStr", &text), B_OK);
    fReports.push_back(text);
  }
  std::vector<std::string> fReports;
};

} // namespace

class TagInput : public testing::Test {
protected:
  TagInput() : fPlayer(new FakePlayer), fLink(false, 1000), fWindow(new ReportWindow) {
    fPlayer->Run();
    fLink.Start();
    fView = new TTagInputView({0, 0, 399, 199}, &fLink);
    fWindow->AddChild(fView);
    fView->MakeFocus();
    fWindow->Show();
    hands::settle(*fWindow);
  }
  ~TagInput() override {
    fWindow->Lock();
    fWindow->Quit();
    fPlayer->Lock();
    fPlayer->Quit();
  }

  void Show(const std::list<std::string>& lines, int32 selected = 0) {
    fView->SetLines(lines);
    fView->SetCurLine(selected);
    hands::settle(*fWindow);
  }
  /** What the view stamps from now on, however slow this machine is. */
  void PlayerIsAt(int32 positionMs) {
    fPlayer->fPositionMs = positionMs;
    for (int i = 0; i < 10000 && fLink.PositionMs() != positionMs; ++i) {
      fLink.Refresh();
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    ASSERT_EQ(fLink.PositionMs(), positionMs);
  }
  void Press(const std::string& key) {
    hands::press(*fWindow, key);
    hands::settle(*fWindow);
  }
  std::list<std::string> Lines() const {
    std::list<std::string> lines;
    fView->GetLines(&lines);
    return lines;
  }

  EditorGlobals fGlobals;
  FakePlayer* fPlayer;
  Sonivo_FrontEnd fLink;
  ReportWindow* fWindow;
  TTagInputView* fView;
};

TEST_F(TagInput, SpaceStampsLineAfterLineAndStaysOnTheLast) {
  Show({"first", "", "三行目"});
  PlayerIsAt(61230);
  for (int i = 0; i < 4; ++i) Press("Space");
  EXPECT_THAT(Lines(), ElementsAre("[01:01:23]first", "[01:01:23]", "[01:01:23]三行目"));
  EXPECT_EQ(fView->CurLine(), 2);
  EXPECT_TRUE(fView->IsModified());
  EXPECT_THAT(fWindow->fReports, ElementsAre("Tag set at line 1", "Tag set at line 2", "Tag set at line 3",
                                             "Line 3: tag replaced, moved by 0 ms"));
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 2), "[01:01:23]三行目"); // drawn anew, though still selected
}

TEST_F(TagInput, KeysTypedFastStampTheLinesTheyWereMeantFor) {
  Show({"a", "b", "c", "d"});
  PlayerIsAt(5000);
  for (const char* key : {"Down", "Space", "Down", "Space"}) hands::press(*fWindow, key);
  hands::settle(*fWindow);
  EXPECT_THAT(Lines(), ElementsAre("a", "[00:05:00]b", "c", "[00:05:00]d"));
}

TEST_F(TagInput, HeldSpaceBarStampsOnceButHeldPlusGoesOn) {
  Show({"a", "b", "c"});
  PlayerIsAt(1000);
  Press("Space");
  for (int i = 0; i < 5; ++i) hands::repeat(*fWindow, "Space");
  hands::settle(*fWindow);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "b", "c"));

  Press("Up");
  Press("+");
  for (int i = 0; i < 3; ++i) hands::repeat(*fWindow, "+");
  hands::settle(*fWindow);
  EXPECT_EQ(Lines().front(), "[00:01:04]a");
}

TEST_F(TagInput, ReplacedTagTakesTheFormOfTheMode) {
  Show({"[00:10]late", "[00:10:50]early"});
  PlayerIsAt(9980);
  Press("Space");
  EXPECT_EQ(Lines().front(), "[00:09:98]late");
  EXPECT_EQ(fWindow->fReports.back(), "Line 1: tag replaced, moved by -20 ms");
  fView->SetMode(1);
  Press("Space");
  EXPECT_EQ(Lines().back(), "[00:09]early");
  EXPECT_EQ(fWindow->fReports.back(), "Line 2: tag replaced, moved by -520 ms"); // as measured, not as printed
}

TEST_F(TagInput, OffsetOfTheSettingsIsAddedAndNeverGoesBelowZero) {
  TPrefValues settings = *gPref->Values();
  settings.timeOffsetMs = -500;
  gPref->SetValues(settings);
  Show({"a", "b"});
  PlayerIsAt(300);
  Press("Space");
  PlayerIsAt(2000);
  Press("Space");
  EXPECT_THAT(Lines(), ElementsAre("[00:00:00]a", "[00:01:50]b"));
}

TEST_F(TagInput, NudgeKeepsTheTagsOwnForm) {
  struct {
    const char* key;
    const char* before;
    const char* after;
    const char* step;
  } const rows[] = {
      {"+", "[00:10]a", "[00:11]a", "1000"},
      {"-", "[00:10:05]a", "[00:10:04]a", "-10"},
      {"-", "[00:00]a", "[00:00]a", "-1000"}, // the step is told even where the bound ate it
      {"+", "[99:59:99]a", "[99:59:99]a", "10"},
  };
  for (const int32 mode : {0, 1}) {
    fView->SetMode(mode);
    for (const auto& row : rows) {
      Show({row.before});
      Press(row.key);
      EXPECT_THAT(Lines(), ElementsAre(row.after)) << row.before << row.key;
      EXPECT_EQ(fWindow->fReports.back(), std::string("Tag moved by ") + row.step + "[ms]");
    }
  }
}

TEST_F(TagInput, NudgeOfALineWithoutATagDoesNothing) {
  Show({"plain"});
  Press("+");
  Press("-");
  EXPECT_THAT(Lines(), ElementsAre("plain"));
  EXPECT_FALSE(fView->IsModified());
  EXPECT_TRUE(fWindow->fReports.empty());
}

TEST_F(TagInput, DeleteTakesTheTagOffAndReportsEvenWhereThereIsNone) {
  Show({"[00:10:05]sung", "plain"});
  Press("Delete");
  Press("Down");
  fView->SetModified(false);
  Press("Delete");
  EXPECT_THAT(Lines(), ElementsAre("sung", "plain"));
  EXPECT_TRUE(fView->IsModified());
  EXPECT_THAT(fWindow->fReports, ElementsAre("Tag removed from line 1", "Tag removed from line 2"));
}

TEST_F(TagInput, WithoutASelectionNoKeyDoesAnything) {
  Show({"[00:01]a"}, -1);
  fView->DeselectAll();
  for (const char* key : {"Space", "+", "-", "Delete"}) Press(key);
  EXPECT_THAT(Lines(), ElementsAre("[00:01]a"));
  EXPECT_FALSE(fView->IsModified());
  EXPECT_TRUE(fWindow->fReports.empty());
  fView->Clear();
  EXPECT_EQ(fView->CurLine(), -1);
  for (const char* key : {"Space", "+", "Delete", "Down", "End"}) Press(key);
  EXPECT_TRUE(Lines().empty());
}

TEST_F(TagInput, OtherKeysMoveTheSelection) {
  Show({"a", "b", "c", "d"});
  for (const auto& [key, line] : {std::pair{"Down", 1}, {"End", 3}, {"Up", 2}, {"Home", 0}, {"PgDown", 3}}) {
    Press(key);
    EXPECT_EQ(fView->CurLine(), line) << key;
  }
  EXPECT_FALSE(fView->IsModified());
}

TEST_F(TagInput, LineOutOfRangeIsHarmless) {
  Show({"a", "b"}, 1);
  fView->SetCurLine(7);
  fView->SetCurLine(-3);
  EXPECT_EQ(fView->CurLine(), 1);
}

TEST_F(TagInput, RowsAreAsHighAsTheFontOfTheSettings) {
  Show({"a", "日本語"});
  const float before = fView->ItemFrame(0).Height();
  TPrefValues settings = *gPref->Values();
  settings.fontSize *= 2;
  gPref->SetValues(settings);
  fView->SetAppearance();
  hands::settle(*fWindow);
  EXPECT_GT(fView->ItemFrame(0).Height(), 1.6F * before);
  EXPECT_EQ(fView->ItemFrame(1).top, fView->ItemFrame(0).bottom + 1);
}

TEST_F(TagInput, OnlyRowsOnTheScreenAreDrawn) {
  Show(std::list<std::string>(100000, "[00:01:00]line"));
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 0), "[00:01:00]line");
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 50000), "");
  Press("End");
  EXPECT_EQ(fView->CurLine(), 99999);
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 99999), "[00:01:00]line");
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 50000), "");
}
