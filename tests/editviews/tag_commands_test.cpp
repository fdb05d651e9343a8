#include "document/editor_view.h"
#include "editviews/following.h"
#include "editviews/tag_input_view.h"
#include "tests/support/editor_fixture.h"
#include "toolkit/readable_colors.h"

using namespace testing;

struct TagCommands : EditorByHand {
  bool WasAskedToPlay(const std::string& part) {
    return Until([&] { return fHost->Part() == part; });
  }
};

TEST_F(TagCommands, CommaAndPeriodNudgeByTenMillisecondsWithShiftAndCtrlByMore) {
  Show("[00:10:00]a\n[00:10]b\nc\n");
  const std::pair<const char*, const char*> kNudges[] = {{".", "[00:10:01]a"},       {",", "[00:10:00]a"},
                                                         {"Shift+.", "[00:10:10]a"}, {"Shift+,", "[00:10:00]a"},
                                                         {"Ctrl+.", "[00:10:50]a"},  {"Ctrl+,", "[00:10:00]a"}};
  for (const auto& [key, line] : kNudges) {
    Press(key);
    EXPECT_EQ(Lines().front(), line) << key;
  }
  EXPECT_THAT(Status(), EndsWith("Tag nudged by -500[ms]"));
  Press("Down", ".");
  EXPECT_THAT(Status(), EndsWith("+ and − move it by 1 s"));
  Press("Down", ".");
  EXPECT_THAT(Status(), EndsWith("This line has no time tag yet"));
  EXPECT_THAT(Lines(), ElementsAre("[00:10:00]a", "[00:10]b", "c"));
}

TEST_F(TagCommands, PlayingFromALineBeginsEarlierByTheLeadInAndNeverBeforeTheSong) {
  Show("[00:10:00]a\n[00:00:30]b\n");
  Press("Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 10000}));
  SetPref([](TPrefValues* values) { values->leadInMs = 300; });
  Press("Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 9700}));
  Press("Shift+Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 9000}));
  EditView().SetCurLine(1);
  Press("Shift+Return");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 0}));
}

TEST_F(TagCommands, ANudgedLineIsPlayedForAMomentAndAPausedSongIsPausedAgain) {
  SetPref([](TPrefValues* values) { values->replaysNudges = true; });
  Show("[00:10:00]a\n");
  fHost->SetPlaying(false);
  PlayAt(5000);
  Press(".");
  EXPECT_TRUE(WasAskedToPlay("10010..10510"));
  EXPECT_THAT(fHost->Commands(), IsEmpty()) << "the player itself pauses it";
  Press("Ctrl+Space");
  fHost->SetPlaying(true);
  PlayAt(10200);
  Press("."); // now it plays
  EXPECT_TRUE(WasTold({kMsgHostSeek, 10020}));
}

TEST_F(TagCommands, OneKeyPlaysThePartsOfALineAndALoopFollowsTheSelection) {
  Show("[00:10:00]a\n[00:12:00]b\nc\n[00:09:00]d\n[00:00:20]e\n[00:20:00]f\n");
  fHost->SetPlaying(true);
  PlayAt(12000);
  const std::tuple<int32, const char*, const char*> kParts[] = {
      {0, "1", "9500..10000"},  {0, "2", "10000..10500"}, {0, "3", "10000..12000"},      {0, "4", "10000..-1"},
      {1, "3", "12000..20000"}, {4, "1", "0..200"},       {0, "5", "10000..12000 loop"},
  };
  for (const auto& [row, key, part] : kParts) {
    EditView().SetCurLine(row);
    Press(key);
    EXPECT_TRUE(WasAskedToPlay(part)) << key << ": " << fHost->Part();
  }
  Press("Down");
  EXPECT_TRUE(WasAskedToPlay("12000..20000 loop")) << fHost->Part();
  Press(",");
  EXPECT_TRUE(WasAskedToPlay("11990..20000 loop")) << fHost->Part();
  Press("5");
  EXPECT_TRUE(WasAskedToPlay("-1..-1")) << "ended";
  Press("5");
  EXPECT_TRUE(WasAskedToPlay("11990..20000 loop")) << fHost->Part();
  Press("Down");
  EXPECT_TRUE(WasAskedToPlay("-1..-1")) << "there is nothing to loop over";
  EXPECT_THAT(Status(), EndsWith("This line has no time tag yet"));
  Press("Down");
  EXPECT_EQ(fHost->Part(), "-1..-1");
  for (const char* key : {"5", "Ctrl+Left", "Down"}) Press(key);
  EXPECT_THAT(Status(), Not(HasSubstr("line 5"))) << "going back has ended the loop";
}

TEST_F(TagCommands, ByChoiceTwoClicksLeadToALineThatIsStampedAgain) {
  Show("a\nb\n");
  PlayAt(10000);
  Press("Space", "Backspace");
  EXPECT_TRUE(WasTold({kMsgHostSeek, 8000}));
  SendToView(BMessage(kMsgToggleCountIn));
  Press("Space", "Backspace");
  EXPECT_TRUE(WasTold({kMsgHostCountIn, 9000}));
}

TEST_F(TagCommands, KeysGoToProblemsAndToLinesWithoutATag) {
  Show("[00:10:00]a\nb\n[00:09:00]c\n[00:09:00]d\n[ar:x]\n\ne\n");
  const std::tuple<const char*, int32, const char*> kWays[] = {
      {"F8", 2, "Line 3: earlier than the line above"},
      {"F8", 3, "Line 4: same time as the line above"},
      {"F8", 3, "No problem below this line"},
      {"Shift+F8", 2, "Line 3: earlier than the line above"},
      {"F7", 6, "No time tag: line 7"},
      {"F7", 6, "All lines below have time tags"},
      {"Shift+F7", 1, "No time tag: line 2"},
  };
  for (const auto& [key, row, report] : kWays) {
    Press(key);
    EXPECT_EQ(EditView().CurLine(), row) << key;
    EXPECT_THAT(Status(), EndsWith(report));
  }
  EXPECT_EQ(hands::row_text(*fWindow, "TagInputView", 2), "[00:09:00]c");
  EXPECT_EQ(hands::row_description(*fWindow, "TagInputView", 2), "earlier than the line above");
  EditView().SetCurLine(2);
  for (int i = 0; i < 3; ++i) Press("Ctrl+.");
  EXPECT_EQ(hands::row_description(*fWindow, "TagInputView", 2), "");
  EXPECT_EQ(hands::row_description(*fWindow, "TagInputView", 3), "earlier than the line above")
      << "the row below is drawn again";
}

TEST_F(TagCommands, ShiftFromHereLeavesTheLinesAboveAndIsOneStep) {
  Show("[00:01:00]a\n[00:02:00]b\n[00:03:00]c\n", 1);
  Press("Ctrl+Shift+M");
  fManager->DeliverAll();
  const BMessage asked = fManager->Taken().back();
  EXPECT_EQ(asked.what, kMsgFineTimeTag);
  BMessage shift = asked;
  shift.what = kMsgShiftTags;
  shift.AddString("_SmplIptData", "-250");
  Send(shift);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]a", "[00:01:75]b", "[00:02:75]c"));
  EXPECT_THAT(Status(), EndsWith("Tags from line 2 on shifted by -250 [ms]"));
  Press("Ctrl+Z", "Shift+Up");
  SendToView(message_of_command(TCommandId::kShiftSelected));
  fManager->DeliverAll();
  BMessage some = fManager->Taken().back();
  some.what = kMsgShiftTags;
  some.AddString("_SmplIptData", "1000");
  Send(some);
  EXPECT_THAT(Lines(), ElementsAre("[00:02:00]a", "[00:03:00]b", "[00:03:00]c"));
  EXPECT_THAT(Status(), EndsWith("Tags of lines 1–2 shifted by 1000 [ms]"));
  EditView().SetModified(false);
  Show("[00:01:00]other\n");
  Send(shift);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:00]other"));
  EXPECT_THAT(Status(), EndsWith("another document is open now"));
}

TEST_F(TagCommands, GoToTheSungLineAndToTheStartWhileTheSongIsPaused) {
  Show("[00:01:00]a\n[00:02:00]b\n");
  fHost->SetPlaying(false);
  PlayAt(2500);
  Press("G");
  EXPECT_EQ(EditView().CurLine(), 1);
  Press("Ctrl+Home");
  EXPECT_EQ(EditView().CurLine(), 0);
  EXPECT_TRUE(WasTold({kMsgHostSeek, 0}));
  PlayAt(500);
  Press("G");
  EXPECT_THAT(Status(), EndsWith("No line is sung at this position"));
}

TEST_F(TagCommands, FollowingShowsEachSungRowOnceAndWaitsForTheUser) {
  TViewChoices choices;
  TFollowing following(&choices);
  EXPECT_EQ(following.RowToShow(5, 0), 5);
  EXPECT_FALSE(following.RowToShow(5, 100)) << "the row has not changed";
  following.KeyPressed(1000000);
  EXPECT_FALSE(following.RowToShow(6, 4999999));
  EXPECT_EQ(following.RowToShow(6, 5000000), 6);
  EXPECT_FALSE(following.RowToShow(-1, 9000000));
  following.Toggle();
  EXPECT_FALSE(following.RowToShow(7, 9000000));
  EXPECT_FALSE(TViewChoices().follows) << "the choice is kept";
  following.Toggle();
  EXPECT_EQ(following.RowToShow(6, 9000000), 6) << "at once";
}

TEST_F(TagCommands, TheSungLineComesIntoSightWhileNoKeyIsPressed) {
  std::string lyrics;
  for (int i = 0; i < 200; ++i) lyrics += "[00:" + std::to_string(10 + i / 10) + ":" + std::to_string(i % 10) + "0]x\n";
  Show(lyrics);
  fHost->SetPlaying(true);
  PlayAt(29900);
  EXPECT_TRUE(Until([&] { return !hands::row_text(*fWindow, "TagInputView", 199).empty(); }));
  EXPECT_EQ(EditView().CurLine(), 0) << "the selection stays";
}

TEST(RowColors, QuietTagsAndSignsStayReadable) {
  const std::pair<rgb_color, rgb_color> kTextOnBackground[] = {{{255, 255, 255, 255}, {0, 0, 0, 255}},
                                                               {{255, 255, 204, 255}, {51, 51, 0, 255}},
                                                               {{0, 0, 0, 255}, {255, 255, 255, 255}},
                                                               {{90, 90, 90, 255}, {255, 255, 255, 255}},
                                                               {{20, 40, 80, 255}, {240, 230, 200, 255}}};
  for (const auto& [text, background] : kTextOnBackground) {
    EXPECT_GE(contrast(quiet_color(text, background), background), 4.5);
    EXPECT_LE(contrast(quiet_color(text, background), background), contrast(text, background));
    EXPECT_GE(contrast(warning_color(background), background), 4.5);
  }
}
