#include "document/recovery_search.h"
#include "journal/document_journal.h"
#include "journal/journal_search.h"
#include "journal/journal_thread.h"
#include "platform/app/looper_lock.h"
#include "platform/interface/text_view.h"
#include "tests/support/editor_fixture.h"
#include "window/notice_bar.h"

using namespace testing;

/** Journals as killed processes have left them, and the editor that finds them. */
class Recovery : public EditorByHand {
protected:
  /** Of the file, or of a document without one: its first line was changed, and another was added. */
  static void LeaveJournal(const std::string& path = {},
                           const std::function<void(TDocument*)>& change = change_and_add) {
    TDocument document;
    TDocumentJournal journal(
        &document, std::make_unique<TJournalThread>(std::make_unique<TJournalFolder>(), [](TJournalReport) {}));
    document.StartNew({});
    entry_ref ref;
    if (get_ref_for_path(path.c_str(), &ref) == B_OK) document.Open(*open_lyrics(ref, ref));
    journal.SetView(1, 0);
    change(&document);
  }
  static void change_and_add(TDocument* document) {
    document->Change({0, 1, {"changed"}}, TEditKind::kOther, 0, 0, 0);
    document->Change({1, 0, {"added"}}, TEditKind::kOther, 0, 1, 0);
  }
  void WaitForNotice(const std::string& part) {
    EXPECT_TRUE(Until([&] { return Notice().find(part) != std::string::npos; })) << Notice();
  }
  static constexpr const char* kView = "NoticeButton0";
  static constexpr const char* kRecover = "NoticeButton1";
  static constexpr const char* kDiscard = "NoticeButton2";
  std::vector<std::string> Journals() const { return TJournalFolder().Names(); }
  void WaitForJournals(size_t count) {
    EXPECT_TRUE(Until([&] { return Journals().size() == count; })) << Journals().size();
  }
};

TEST_F(Recovery, LinesSelectionModeAndUndoComeBackAndCountAsUnsaved) {
  const std::string path = fFolder.Write("a.lrc", "one\n");
  LeaveJournal(path);
  Open(path);
  WaitForNotice("a.lrc");
  EXPECT_THAT(Notice(), StartsWith("Unsaved changes of "));
  EXPECT_THAT(Lines(), ElementsAre("one"));
  Click(kRecover);
  EXPECT_THAT(Lines(), ElementsAre("changed", "added"));
  EXPECT_EQ(EditView().CurLine(), 1);
  EXPECT_EQ(EditView().StatBarSymbol(), "Tag, standard");
  EXPECT_TRUE(IsModified());
  EXPECT_EQ(Title(), "a.lrc - Vesmo Editor");
  EXPECT_EQ(Notice(), "");
  EXPECT_THAT(Status(), EndsWith("Unsaved changes recovered"));
  WaitForJournals(1); // its own now
  Press("Ctrl+Z", "Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("one"));
  EXPECT_FALSE(IsModified());
  WaitForJournals(0);
  Press("Ctrl+Shift+Z");
  WaitForJournals(1);
  Press("Ctrl+S");
  EXPECT_EQ(fFolder.Read("a.lrc"), std::string("changed\n") + '\0');
  WaitForJournals(0);
}

TEST_F(Recovery, UndoingUnifiedTagsAfterACrashBringsTheirDialectBack) {
  const std::string path = fFolder.Write("a.lrc", "[00:01.20]a\n[00:02:30]b\n");
  LeaveJournal(path, [](TDocument* document) { document->Unify(TDialect::kCommon, 0, 0); });
  Open(path);
  Click("NoticeClose"); // the offer to unify them
  WaitForNotice("Unsaved changes");
  Click(kRecover);
  EXPECT_THAT(Status(), HasSubstr("[mm:ss.cc]"));
  Press("Ctrl+Z");
  EXPECT_THAT(Lines(), ElementsAre("[00:01.20]a", "[00:02:30]b"));
  EXPECT_THAT(Status(), Not(HasSubstr("[mm:ss.cc]")));
}

TEST_F(Recovery, ChangesCanBeViewedBeforeADecision) {
  const std::string path = fFolder.Write("a.lrc", "one\n");
  LeaveJournal(path);
  Open(path);
  WaitForNotice("a.lrc");
  Click(kView);
  BWindow& shown = hands::wait_for_window("Differences – a.lrc");
  EXPECT_EQ(hands::spoken(shown, "Differences").name, "- as saved, + with the unsaved changes");
  {
    const TLooperLock lock(&shown);
    EXPECT_THAT(static_cast<BTextView*>(shown.FindView("Differences"))->Text(), HasSubstr("+ added"));
  }
  EXPECT_THAT(Lines(), ElementsAre("one"));
  EXPECT_THAT(Notice(), HasSubstr("a.lrc"));
  for (const std::string& name : Journals()) fFolder.Write("state/KOREVA/VesmoE/Journal/" + name, "damaged");
  for (const char* button : {kView, kRecover})
    EXPECT_THAT(Answer("U", [&] { Click(button); }).text, StartsWith("The unsaved changes cannot be read."));
  EXPECT_THAT(Lines(), ElementsAre("one"));
}

TEST_F(Recovery, FileThatHasBecomeAnotherIsNeverOverwritten) {
  const std::string path = fFolder.Write("a.lrc", "one\n");
  LeaveJournal(path);
  fFolder.Write("a.lrc", "other\n");
  Open(path);
  WaitForNotice("the file has changed since");
  Click(kRecover);
  EXPECT_THAT(Lines(), ElementsAre("changed", "added"));
  EXPECT_EQ(Title(), "Untitled - Vesmo Editor");
  EXPECT_TRUE(IsModified());
  for (int i = 0; i < 2; ++i) Press("Ctrl+Z");
  EXPECT_TRUE(IsModified()) << "not even what was read is saved anywhere";
  EXPECT_EQ(fFolder.Read("a.lrc"), "other\n");
}

TEST_F(Recovery, SeveralAreOfferedOneAfterTheOtherAndAreOnlyDiscardedAfterAQuestion) {
  const std::string path = fFolder.Write("a.lrc", "one\n");
  LeaveJournal(path);
  LeaveJournal(path);
  LeaveJournal(path);
  LeaveJournal(); // offered at the next start
  Open(path);
  Press("Ctrl+E", "x");
  EXPECT_THAT(Lines(), ElementsAre("xone"));
  WaitForNotice("a.lrc – more: 2");
  EXPECT_EQ(Answer("N", [&] { Click(kDiscard); }).text, "Discard these unsaved changes for good?");
  WaitForNotice("more: 2");
  Answer("Y", [&] { Click(kDiscard); });
  WaitForNotice("more: 1");
  WaitForJournals(4); // one is of the open document
  Click("NoticeClose");
  EXPECT_THAT(Notice(), HasSubstr("a.lrc"));
  EXPECT_THAT(Notice(), Not(HasSubstr("more")));
  EXPECT_THAT(Journals(), SizeIs(4)) << "put off";
  Answer("Escape", [&] { Click(kRecover); });
  EXPECT_THAT(Lines(), ElementsAre("xone")) << "cancelled: nothing is replaced";
  Answer("N", [&] { Click(kRecover); });
  EXPECT_THAT(Lines(), ElementsAre("changed", "added"));
  EXPECT_EQ(Notice(), "");
}

TEST_F(Recovery, JournalStaysWhenTheWindowIsClosedWithoutAnAnswerAndGoesAfterANo) {
  Open(fFolder.Write("a.lrc", "[00:10]one\n"));
  EXPECT_THAT(Journals(), IsEmpty());
  Change();
  WaitForJournals(1);
  Answer("Escape", [&] { PressCloseButton(); });
  EXPECT_FALSE(IsClosed());
  EXPECT_THAT(Journals(), SizeIs(1));
  Answer("N", [&] { PressCloseButton(); });
  EXPECT_TRUE(Until([&] { return IsClosed(); }));
  EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(Recovery, WindowThatIsMadeToCloseLeavesTheJournal) {
  Open(fFolder.Write("a.lrc", "[00:10]one\n"));
  Change();
  ASSERT_TRUE(fWindow->Lock());
  fWindow->Quit();
  const auto found = find_journals(TJournalFolder(), 0);
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_EQ(found[0].target.path, fFolder.File("a.lrc"));
}

TEST_F(Recovery, WhoElseHasTheFileOpenIsToldAndOnceWhatCannotBeRead) {
  const std::string path = fFolder.Write("a.lrc", "one\n");
  TJournalFolder folder;
  const auto other = folder.Create(TJournalKind::kOpenDocument);
  other->Append(encoded_header({.process = {1, 0, {}}, .target = {path, {}, {}, {}}}));
  folder.Create()->Append("damaged");
  Open(path);
  WaitForNotice("Also open in another editor: a.lrc – process 1");
  Click("NoticeClose");
  WaitForNotice("cannot be read. It is kept here: " + fFolder.File("state/KOREVA/VesmoE/Journal/"));
  Click("NoticeClose");
  Open(path);
  WaitForNotice("Also open");
  Click("NoticeClose");
  EXPECT_EQ(Notice(), "");
}

TEST_F(Recovery, OtherEditorsAreToldOfTheFileOnlyWhileItIsOpen) {
  const auto announced = [] { return TJournalFolder().Names(TJournalKind::kOpenDocument).size(); };
  Open(fFolder.Write("a.lrc", "one\n"));
  EXPECT_TRUE(Until([&] { return announced() == 1; }));
  SendToView(BMessage(kMsgNew));
  SendToView(BMessage(kMsgRefreshInfo));
  EXPECT_TRUE(Until([&] { return announced() == 0; }));
}

TEST(RecoverySearch, ADiskThatNeverAnswersDoesNotKeepTheWindowOpen) {
  std::promise<void> release;
  const auto begun = std::make_shared<std::promise<void>>();
  const auto ended = std::make_shared<std::promise<void>>();
  {
    TRecoverySearch search(BMessenger(), std::chrono::milliseconds(1));
    search.Do([until = release.get_future().share(), begun, ended] {
      begun->set_value();
      until.wait();
      ended->set_value();
    });
    begun->get_future().wait();
  }
  release.set_value();
  ended->get_future().wait();
}

TEST_F(Recovery, JournalThatCannotBeWrittenIsReportedOnce) {
  fFolder.Write("state", "a file where the folder should be");
  Open(fFolder.Write("a.lrc", "[00:10]one\n[00:20]two\n"));
  Change();
  WaitForNotice("can no longer be recorded");
  Click("NoticeClose");
  Press("Down");
  Change();
  Settle();
  EXPECT_EQ(Notice(), "");
  EXPECT_THAT(Lines(), ElementsAre("one", "two")) << "the work goes on";
  for (const auto report : {TJournalReport::kWorksAgain, TJournalReport::kFailed})
    SendToView(message_of(kMsgJournalReport, "Report", static_cast<int32>(report)));
  WaitForNotice("can no longer be recorded");
}
