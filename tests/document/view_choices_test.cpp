/** What the user has chosen is on the screen at once. */

#include "editviews/view_choices.h"
#include "tests/support/editor_fixture.h"

using namespace testing;

using ViewChoices = EditorByHand;

TEST_F(ViewChoices, EachIsMarkedInItsMenuReportedAndKept) {
  using Menu = std::vector<std::string>;
  const Menu go{"E - Edit", "G - Go"}, mode{"M - Mode"}, listen{"M - Mode", "L - Listen"};
  const struct {
    TCommandId command;
    Menu menu;
    const char* label;
    bool TViewChoices::*choice;
    const char* report;
  } rows[] = {
      {TCommandId::kFollow, go, "Follow the song", &TViewChoices::follows, "The list does not follow the song"},
      {TCommandId::kShowClock, go, "Play position in the status bar", &TViewChoices::showsClock, ""},
      {TCommandId::kShowLane, go, "Sound around the line", &TViewChoices::showsLane, ""},
      {TCommandId::kLaneWave, go, "Sound as a wave", &TViewChoices::showsWave, ""},
      {TCommandId::kWordByWord, mode, "Word by word", &TViewChoices::timesWords, "the space bar times each word"},
      {TCommandId::kClicks, listen, "Clicks at the time tags", &TViewChoices::clicks, ""},
      {TCommandId::kCountIn, listen, "Count in before stamping again", &TViewChoices::countsIn, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.label);
    const auto isMarked = [&] {
      const auto items = hands::menu_lines(*fWindow, row.menu);
      return std::ranges::any_of(items,
                                 [&](const auto& item) { return item.label.ends_with(row.label) && item.isMarked; });
    };
    const bool before = TViewChoices().*row.choice;
    EXPECT_EQ(isMarked(), before);
    SendToView(message_of_command(row.command));
    EXPECT_EQ(TViewChoices().*row.choice, !before);
    EXPECT_EQ(isMarked(), !before);
    EXPECT_THAT(Status(), EndsWith(row.report));
  }
}

TEST_F(ViewChoices, TextUnsavedMarkAndClockHaveTheStatusBarForThemselves) {
  SendToView(BMessage(kMsgShowClock));
  Change();
  SendToView(BMessage(kMsgRefreshInfo));
  float right = -1;
  for (const char* part : {"StatusBar", "UnsavedMark", "SongTime", "SeekBar"}) {
    const BRect frame = hands::control_frame(*fWindow, part);
    EXPECT_GT(frame.left, right) << part;
    EXPECT_GT(frame.right, frame.left) << part;
    right = frame.right;
  }
}

TEST_F(ViewChoices, AnotherLanguageIsSpokenAtOnceByAllThatIsShown) {
  const auto choose = [this](const char* language) {
    ASSERT_EQ(gLLT->Load((std::string(TEXTS_FOLDER "/") + language).c_str()), 0);
    SendToView(BMessage(kMsgLanguageChanged));
  };
  choose("German.llt");
  EXPECT_EQ(Title(), "Neuer Liedtext - Vesmo Editor");
  Open(fFolder.Write("a.lrc", "[00:01.20]one\n[00:02:50]two\n"));
  SendToView(BMessage(kMsgShowClock));
  SendToView(BMessage(kMsgShowLane));
  EXPECT_THAT(Notice(), StartsWith("Diese Datei enthält zwei Formen"));
  choose("English.llt");
  EXPECT_THAT(Notice(), StartsWith("This file has two forms"));
  EXPECT_THAT(Status(), EndsWith("Space: stamp   +/-: nudge   Delete: delete tag"));
  EXPECT_EQ(hands::spoken(*fWindow, "SeekBar").name, "Position in the song");
  EXPECT_EQ(hands::spoken(*fWindow, "Lane").name, "Sound around the line");
  Click("NoticeClose");
  choose("German.llt");
  EXPECT_EQ(Notice(), "") << "a closed notice stays closed";
  fFolder.Write("a.lrc", "theirs\n");
  SendToView(BMessage(kMsgLookAtFile));
  EXPECT_TRUE(Until([this] { return !Notice().empty(); }));
  const std::string german = Notice();
  choose("English.llt");
  EXPECT_NE(Notice(), german);
  EXPECT_THAT(Notice(), EndsWith("was changed by another program."));
}
