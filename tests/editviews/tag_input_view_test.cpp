#include "editviews/tag_input_view.h"

#include "platform/app/message_filter.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

struct TagInputView : EditorByHand {
  /** Presses the key with the song at that position. */
  void PressAt(int32 positionMs, const std::string& key) {
    PlayAt(positionMs);
    Press(key);
  }
};

TEST_F(TagInputView, AReplacedTagTakesTheModesForm) {
  Show("[00:10:50]a\n");
  Press("Ctrl+D");
  PressAt(11999, "Space");
  EXPECT_THAT(Lines(), ElementsAre("[00:11]a"));
  EXPECT_THAT(Status(), EndsWith("Line 1: tag replaced, moved by 1499 ms")) << "before it is cut to the form";
}

TEST_F(TagInputView, OffsetIsAddedAndStopsAtZero) {
  SetPref([](TPrefValues* values) { values->timeOffsetMs = -500; });
  Show("a\nb\n");
  PressAt(300, "Space");
  PressAt(1500, "Space");
  EXPECT_THAT(Lines(), ElementsAre("[00:00:00]a", "[00:01:00]b"));
}

TEST_F(TagInputView, AStampSaysThatNothingPlaysOrThatAPauseGivesTheSameTime) {
  fHost->SetPlaying(false);
  Show("a\nb\nc\n");
  PressAt(1000, "Space");
  EXPECT_THAT(Status(), EndsWith("Stamped line 1"));
  Press("Space");
  EXPECT_THAT(Status(), EndsWith("Stamped line 2 – the same time again: the song is paused"));
  PlayAt(0, "");
  Press("Space");
  EXPECT_THAT(Status(), EndsWith("Stamped line 3 – nothing is playing"));
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "[00:01:00]b", "[00:00:00]c"));
}

TEST_F(TagInputView, AStampHasThePositionOfItsKeyNotOfTheLastPoll) {
  Show("a\n");
  bool isCurrent = false;
  // The player has 20 ms to answer, which a busy machine may not grant it every time.
  for (int32 second = 1; second < 60 && !isCurrent; ++second) {
    fHost->SetRecord(second * 1000, "song");
    Press("Space");
    isCurrent = Lines().front() == (second < 10 ? "[00:0" : "[00:") + std::to_string(second) + ":00]a";
  }
  EXPECT_TRUE(isCurrent);
}

TEST_F(TagInputView, AKeyThatHasWaitedGetsThePositionOfItsOwnTime) {
  Show("a\n");
  fHost->SetPlaying(true);
  PlayAt(60000);
  const auto stampsAt = [this](const std::string& line) {
    for (int tries = 0; tries < 100 && Lines().front() != line; ++tries) { // answers may take longer than 20 ms
      EditView().SetCurLine(0);
      hands::hold(*fWindow, "Space", 1000, 50);
      Settle();
    }
    return Lines().front() == line;
  };
  EXPECT_TRUE(stampsAt("[01:00:00]a")) << "the player does not know it: its position is the tag";
  fHost->SetEarlierMs(59000);
  EXPECT_TRUE(stampsAt("[00:59:00]a"));
  Press("Delete");
  Press("Ctrl+B");
  EXPECT_TRUE(stampsAt("[00:59:00]a")) << "corrected once";
}

TEST_F(TagInputView, AHeldSpaceBarStampsOnceAndAHeldPlusGoesOn) {
  Show("a\nb\n");
  PlayAt(1000);
  hands::press(*fWindow, "Space");
  for (int i = 0; i < 2; ++i) hands::repeat(*fWindow, "Space");
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "b"));
  EditView().SetCurLine(0);
  Press("+");
  for (int i = 0; i < 3; ++i) hands::repeat(*fWindow, "+");
  Settle();
  EXPECT_THAT(Lines(), ElementsAre("[00:01:04]a", "b"));
}

TEST_F(TagInputView, PlusAndMinusMoveTheTagOfTheLineIfItHasOne) {
  Show("[00:10]a\n[00:10:00]b\nd\n");
  Press("+");
  EXPECT_THAT(Status(), EndsWith("Tag nudged by 1000[ms]"));
  Press("Down", "-");
  EXPECT_THAT(Status(), EndsWith("Tag nudged by -10[ms]"));
  EXPECT_THAT(Lines(), ElementsAre("[00:11]a", "[00:09:99]b", "d"));
  Press("Down");
  const std::string before = Status();
  EditView().SetModified(false);
  Press("+");
  EXPECT_EQ(Status(), before);
  EXPECT_FALSE(IsModified());
}

TEST_F(TagInputView, DeleteTakesTheTagOffAndAlwaysMarks) {
  Show("[00:10]a [00:11:00]word\nb\n");
  Press("Delete");
  EditView().SetCurLine(1);
  EditView().SetModified(false);
  Press("Delete");
  EXPECT_THAT(Lines(), ElementsAre("a [00:11:00]word", "b"));
  EXPECT_TRUE(IsModified());
  EXPECT_THAT(Status(), EndsWith("Tag deleted from line 2"));
}

TEST_F(TagInputView, WithoutASelectionNothingHappens) {
  EditView().Clear();
  Settle();
  const std::string before = Status();
  for (const char* key : {"Space", "+", "Delete"}) Press(key);
  EXPECT_FALSE(IsModified());
  EXPECT_EQ(Status(), before);
  EXPECT_EQ(EditView().CurLine(), -1);
  Show("a\n");
  Press("Ctrl+E");
  EditView().Clear();
  EXPECT_THAT(Lines(), ElementsAre());
}

TEST_F(TagInputView, RowsAreAsHighAsTheFontOfTheSettings) {
  Show("a\n日本語\n");
  const auto& view = static_cast<TTagInputView&>(EditView());
  const float before = view.ItemFrame(0).Height();
  SetPref([](TPrefValues* values) { values->fontSize *= 2; });
  SendToView(BMessage(kMsgAppearance));
  EXPECT_GT(view.ItemFrame(0).Height(), 1.6F * before);
  EXPECT_EQ(view.ItemFrame(1).top, view.ItemFrame(0).bottom + 1);
}

TEST_F(TagInputView, CtrlLeavesTheKeysThatMoveFarToTheList) {
  std::string lyrics;
  for (int i = 0; i < 100; ++i) lyrics += "a\n";
  Show(lyrics, 50);
  const auto rowAfter = [this](const char* key) {
    Press(key);
    return EditView().CurLine();
  };
  EXPECT_EQ(rowAfter("Ctrl+End"), 99);
  EXPECT_LT(rowAfter("Ctrl+PgUp"), 99);
  EXPECT_EQ(rowAfter("Ctrl+Home"), 0);
  EXPECT_GT(rowAfter("Ctrl+PgDown"), 0);
  const int32 before = EditView().CurLine();
  EXPECT_EQ(rowAfter("Ctrl+Up"), before) << "which is the player's";
}

namespace {
/** Keeps the texts of the status reports on their way to the window. */
struct Reports : BMessageFilter {
  explicit Reports(std::vector<std::string>* texts) : BMessageFilter(kMsgStatBarStr), fTexts(texts) {}
  filter_result Filter(BMessage* report, BHandler**) override {
    fTexts->push_back(report->GetString("StatBarStr"));
    return B_DISPATCH_MESSAGE;
  }

private:
  std::vector<std::string>* const fTexts;
};
} // namespace

TEST_F(TagInputView, RepeatedCorrectionsOfFreshStampsAreReportedOnceAsLateness) {
  std::vector<std::string> reports;
  fWindow->AddCommonFilter(new Reports(&reports));
  SetPref([](TPrefValues* values) { values->timeOffsetMs = 10; });
  constexpr const char* kTagged = "[00:05:01]a\n[00:06:01]a\n[00:07:01]a\n[00:08:01]a\n"
                                  "[00:09:01]a\n[00:10:01]a\n[00:11:01]a\n[00:12:01]a\n";
  Show("a\na\na\na\na\na\na\na\n");
  for (int32 row = 0; row < 8; ++row) {
    PressAt(5000 + 1000 * row, "Space");
    EXPECT_THAT(Status(), EndsWith("Stamped line " + std::to_string(row + 1)));
    EditView().SetCurLine(row);
    for (int step = 0; step < 4; ++step) {
      Press("-");
      EXPECT_EQ(reports.back(), "Tag nudged by -10[ms]") << "the finding is a field of its own";
      const bool isNew = row == 5 && step == 0;
      EXPECT_THAT(Status(), EndsWith(std::string("Tag nudged by -10[ms]") +
                                     (isNew ? "   Your stamps are about 40 ms late" : "")));
    }
    EditView().SetCurLine(row + 1);
  }
  fManager->DeliverAll();
  Answer("N", [&] { Show(kTagged); }); // the corrections are of the stamps of one document
  for (int32 row = 0; row < 8; ++row) {
    EditView().SetCurLine(row);
    for (int step = 0; step < 9; ++step) Press("-");
  }
  EXPECT_THAT(Status(), EndsWith("Tag nudged by -10[ms]"));
  fManager->DeliverAll();
  int hints = 0;
  for (const BMessage& told : fManager->Taken()) {
    if (told.what != kMsgStampHint) continue;
    ++hints;
    EXPECT_EQ(field<int32>(told, "LateMs"), 40);
    EXPECT_EQ(field<int32>(told, "TmDf"), 10);
  }
  EXPECT_EQ(hints, 1);
}

TEST_F(TagInputView, AStepOfTheHistoryCorrectsEachLineByItsOwnTime) {
  std::string lyrics;
  for (const char* second : {"1", "2", "3", "4", "5", "6", "7", "8"})
    lyrics += std::string("[00:0") + second + ":00]a\n";
  Show(lyrics);
  Shift("-50");
  for (int32 row = 0; row < 8; ++row) PressAt(1050 + 1000 * row, "Space");
  for (int step = 0; step < 9; ++step) Press("Ctrl+Z");
  EditView().SetCurLine(0);
  Press("-");
  EXPECT_THAT(Status(), EndsWith("Your stamps are about 50 ms late"));
}
