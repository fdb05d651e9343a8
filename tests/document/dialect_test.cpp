#include "common/koreva.h"
#include "document/player_copies.h"
#include "platform/interface/view.h"
#include "plugin/kept_record.h"
#include "tests/support/editor_fixture.h"

using namespace std::string_literals;
using namespace testing;

/** Lyrics in the form of other players, in the editor. */
struct CommonLyrics : EditorByHand {
  /** The copy command, until the player has named its song. */
  void Copy() {
    const std::string before = Status();
    SendToView(BMessage(kMsgCopyForPlayers));
    EXPECT_TRUE(Until([&] { return Status() != before; })) << Status();
  }
  static constexpr const char* kFirst = "NoticeButton0";
};

TEST_F(CommonLyrics, SavedInTheOtherDialectTimesWithinLinesHaveItsFormAsWell) {
  const std::string family = "[00:01:00]a [00:02:00]b[00:03] [x]\n[00:04:00][00:05:00]c\n"s + '\0';
  const std::string common = "[00:01.00]a <00:02.00>b<00:03.00> [x]\n[00:04.00][00:05.00]c\n";
  const auto saveAs = [&](const char* name, int32 dialect) {
    Send(SaveAs(name, "Dialect", dialect));
    return fFolder.Read(name);
  };
  Open(fFolder.Write("a.lrc", family));
  EXPECT_EQ(saveAs("b.lrc", 1), common);
  EXPECT_THAT(Status(), Not(HasSubstr("thousandths")));
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("b.lrc"), common) << "again";
  Press("Ctrl+Z");
  EXPECT_EQ(Lines().front(), "[00:01:00]a [00:02:00]b[00:03] [x]");
  Press("Ctrl+Shift+Z");
  Open(fFolder.Write("c.lrc", "[00:01.00]a <00:02.004>b [00:03.00]c\n"));
  EXPECT_EQ(saveAs("d.lrc", 0), "[00:01:00]a [00:02:00]b [00:03:00]c\n"s + '\0');
  EXPECT_THAT(Status(), HasSubstr("thousandths of a second were cut"));
}

TEST_F(CommonLyrics, MixedTagsAreMadeOneByTheBarAndUndoneInOneStep) {
  Open(fFolder.Write("a.lrc", "[00:01.20]one\n"));
  fFolder.Write("a.lrc", "[00:01.20]one\n[00:02:50]two\n");
  SendToView(BMessage(kMsgReloadFile));
  EXPECT_THAT(Lines(), ElementsAre("[00:01.20]one", "[00:02:50]two"));
  EXPECT_THAT(Notice(), HasSubstr("two forms"));
  Click(kFirst);
  EXPECT_THAT(Lines(), ElementsAre("[00:01:20]one", "[00:02:50]two"));
  EXPECT_EQ(Notice(), "");
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.20]one\n[00:02.50]two\n");
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:01.20]one", "[00:02:50]two"));
  SendToView(message_of(kMsgUnifyTags, "Dialect", 1));
  EXPECT_THAT(Lines(), ElementsAre("[00:01.20]one", "[00:02:50]two")) << "nothing is offered any more";
}

TEST_F(CommonLyrics, ThousandthsThatTheOtherFormCannotHoldAreNotCutInSilence) {
  Open(fFolder.Write("a.lrc", "[00:01.204]one\n[00:02:50]two\n"));
  Click("NoticeButton1");
  EXPECT_THAT(Lines(), ElementsAre("[00:01:20]one", "[00:02:50]two"));
  EXPECT_THAT(Status(), EndsWith("(thousandths of a second were cut to hundredths)"));
}

TEST_F(CommonLyrics, SettingsDecideAboutNewDocumentsAndRecognition) {
  SetPref([](TPrefValues* values) { values->newDialect = 1, values->recognisesCommon = false; });
  Open(fFolder.Write("a.lrc", "[00:01.20]one\n"));
  EXPECT_THAT(Lines(), ElementsAre("[00:01.20]one"));
  SendToView(BMessage(kMsgNew));
  EXPECT_THAT(Status(), HasSubstr("<LF> [mm:ss.cc]   "));
}

TEST_F(CommonLyrics, CopyForPlayersIsRenewedAndNeverReplacesAnotherFile) {
  Open(fFolder.Write("a.txt", "[00:01:20]one\n"));
  Copy();
  EXPECT_THAT(Status(), HasSubstr("Copy for other players: " + fFolder.File("a.lrc")));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.20]one\n");
  EXPECT_THAT(Notice(), StartsWith("a.lrc was saved for other players"));
  Click(kFirst);
  fManager->DeliverAll();
  EXPECT_THAT(fManager->Codes(), Contains(uint32{kMsgOptionsChosen})) << "for its preferences";
  SetPref([](TPrefValues* values) { *values = {}; });
  EXPECT_TRUE(load_options() && gPref->Values()->renewsCopies) << "after a restart, too";
  Press("+", "Ctrl+S");
  EXPECT_THAT(Status(), HasSubstr("copy renewed: a.lrc"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.21]one\n");

  fFolder.Write("a.lrc", "foreign\n");
  Press("+", "Ctrl+S");
  EXPECT_THAT(Notice(), StartsWith("a.lrc was not renewed"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "foreign\n");
  EXPECT_THAT(Answer("R", [&] { Copy(); }).text, HasSubstr("already exists"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.22]one\n");
  const auto kept = fFolder.File("KOREVA/VesmoE");
  EXPECT_TRUE(std::ranges::any_of(std::filesystem::directory_iterator(kept), [](const auto& entry) {
    return entry.path().filename().string().starts_with("Recovered_") && entry.file_size() == 8;
  })) << "the foreign file was backed up";
}

TEST(PlayerCopies, TheOldestAreForgottenAndTheNewestOfALyricsFileCounts) {
  TPlayerCopies copies;
  for (int i = 0; i < 2002; ++i) {
    const std::string number = std::to_string(i);
    copies.Add({"/copy" + number, "/lyrics" + (i == 2001 ? "2000" : number), 1, 1});
  }
  EXPECT_EQ(copies.Of("/lyrics1"), std::nullopt);
  EXPECT_EQ(copies.Of("/lyrics2").value().path, "/copy2");
  EXPECT_EQ(copies.Of("/lyrics2000").value().path, "/copy2001");
}

TEST_F(CommonLyrics, CopyOfADocumentWithoutAFileIsRenewedOnceItHasOne) {
  fHost->fEntries = {{fFolder.Write("song.mp3", ""), "song"}};
  SetPref([](TPrefValues* values) { values->renewsCopies = true; });
  PlayAt(1000);
  Press("Space");
  Copy();
  EXPECT_EQ(fFolder.Read("song.lrc"), "[00:01.00]\n");
  Press("+");
  Send(SaveAs("b.txt"));
  EXPECT_EQ(fFolder.Read("song.lrc"), "[00:01.01]\n");
}

TEST_F(CommonLyrics, LyricsUnderTheNameOfTheCopyAreOfferedToBeSavedInItsForm) {
  Open(fFolder.Write("a.lrc", "[00:01:20]one\n"));
  EXPECT_THAT(Answer("Y", [&] { Copy(); }).text, HasSubstr("the file that you are editing"));
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.20]one\n");
  Copy();
  EXPECT_THAT(Status(), HasSubstr("already in the form"));
}

TEST_F(CommonLyrics, ChineseFileIsOfferedInItsEncodingAndSavedInIt) {
  std::string bytes;
  for (int i = 0; i < 20; ++i) bytes += "[00:01.20]\xCE\xD2\xB5\xC4\xD0\xC4\xCC\xAB\xC2\xD2\n";
  Open(fFolder.Write("a.lrc", bytes));
  EXPECT_EQ(Notice(), "This file is probably GB18030.");
  Open(fFolder.Write("b.lrc", "plain\n"));
  EXPECT_EQ(Notice(), "") << "it was about the file before";
  Open(fFolder.File("a.lrc"));
  Click(kFirst);
  EXPECT_EQ(Lines().front(), "[00:01:20]我的心太乱");
  EXPECT_THAT(Status(), HasSubstr("] GB18030 <LF> [mm:ss.cc]"));
  EXPECT_EQ(Notice(), "");
  Press("+", "Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), "[00:01.21" + bytes.substr(9));
  SetPref([](TPrefValues* values) { values->savesForeignAsUtf8 = true; });
  Press("Ctrl+S");
  EXPECT_THAT(fFolder.Read("a.lrc"), StartsWith("[00:01.21]我的心太乱\n"));
}
