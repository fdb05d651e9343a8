#include "document/file_watch.h"

#include "document/notice.h"
#include "platform/app/message_filter.h"
#include "platform/app/node_monitor.h"
#include "platform/interface/window_peer.h"
#include "tests/support/editor_fixture.h"

#include <semaphore>

using namespace testing;

namespace {

constexpr const char* kTheirs = "[00:01]theirs\n";
constexpr const char* kChangedText = "was changed by another program.";
constexpr const char* kMissingText = "no longer exists. Saving creates it again.";

class Counter : public BMessageFilter {
public:
  using BMessageFilter::BMessageFilter;
  filter_result Filter(BMessage*, BHandler**) override {
    ++fCount;
    return B_DISPATCH_MESSAGE;
  }
  int fCount = 0;
};

/** A file in the editor, and another program that changes it. */
class FileOutside : public EditorByHand {
protected:
  FileOutside() {
    fWindow->AddCommonFilter(fLooked);
    Open(fPath);
    Compare(); // the file is watched from then on
  }
  void Rewrite(const std::string& bytes = kTheirs) { fFolder.Write("a.lrc", bytes); }
  void RenameOver(const std::string& bytes = kTheirs) { std::filesystem::rename(fFolder.Write("b.tmp", bytes), fPath); }
  void Touch() const {
    std::filesystem::last_write_time(fPath, std::filesystem::last_write_time(fPath) + std::chrono::hours(1));
  }
  /** Leaves the focus as the only trigger. */
  void StopNotifications() { stop_watching(fWindow->FindView("VesmoEditorView")); }
  /** Gives the window the focus, and waits until what that leads to is over. */
  void Compare() {
    for (int i = 0; i < 2; ++i) {
      const int before = fLooked->fCount;
      for (const bool active : {false, true}) Send(message_of(display::DISPLAY_WINDOW_ACTIVATED, "active", active));
      EXPECT_TRUE(Until([&] { return fLooked->fCount > before; }));
    }
    Settle();
  }
  bool IsNoticed(const std::string& end) {
    return Until([&] { return end.empty() ? Notice().empty() : Notice().ends_with(end); });
  }
  void Save() { SendToView(BMessage(kMsgSave)); } // no shortcut: no window is active after a question
  std::string OnDisk() const { return std::filesystem::is_regular_file(fPath) ? fFolder.Read("a.lrc") : "(none)"; }
  std::vector<std::string> Kept() const {
    std::vector<std::string> kept;
    for (const auto& entry : std::filesystem::directory_iterator(fFolder.File("KOREVA/VesmoE")))
      if (entry.path().filename().string().starts_with("Recovered_"))
        kept.push_back(fFolder.Read(std::filesystem::relative(entry.path(), fFolder.Path())));
    return kept;
  }
  const std::string fPath = fFolder.Write("a.lrc", "[00:01]mine\n");
  Counter* const fLooked = new Counter(kMsgFileLooked);
};

enum class Disk { kChanged, kDeleted, kRenamedOver, kDateOnly };
enum class Event { kFocus, kSave, kClose };
using Row = std::tuple<bool, Disk, Event>;

} // namespace

/** Clean or modified, every change of the file, every moment at which it is compared. */
class FileOutsideTable : public FileOutside, public testing::WithParamInterface<Row> {
protected:
  const bool fIsModified = std::get<0>(GetParam());
  const Disk fDisk = std::get<1>(GetParam());
  const bool fIsTheirs = fDisk == Disk::kChanged || fDisk == Disk::kRenamedOver;
  const std::string fMine = std::string(fIsModified ? "mine\n\0" : "[00:01]mine\n\0", fIsModified ? 6 : 13);

  void ChangeDisk() {
    if (fDisk == Disk::kChanged) Rewrite();
    if (fDisk == Disk::kDeleted) std::filesystem::remove(fPath);
    if (fDisk == Disk::kRenamedOver) RenameOver();
    if (fDisk == Disk::kDateOnly) Touch();
  }
  void Focus() {
    Compare();
    // A file that was replaced is looked at once more, when it is watched.
    EXPECT_TRUE(IsNoticed(fIsTheirs ? kChangedText : fDisk == Disk::kDeleted ? kMissingText : ""));
    EXPECT_EQ(IsModified(), fIsModified);
    EXPECT_THAT(Lines(), ElementsAre(fIsModified ? "mine" : "[00:01]mine"));
  }
  void SaveAndCheck() {
    if (fIsTheirs) {
      EXPECT_THAT(Answer("C", [&] { Save(); }).text, HasSubstr("Overwrite that version?"));
      EXPECT_EQ(OnDisk(), kTheirs);
      EXPECT_EQ(IsModified(), fIsModified);
      Answer("A", [&] { Save(); });
      EXPECT_THAT(Kept(), ElementsAre(kTheirs));
    } else {
      Save();
      EXPECT_THAT(Kept(), IsEmpty());
    }
    EXPECT_EQ(OnDisk(), fMine);
    EXPECT_FALSE(IsModified());
    Compare();
    EXPECT_EQ(Notice(), "");
  }
  void Close() {
    const auto close = [&] { PressCloseButton(); };
    const bool isAsked = fIsModified || fDisk == Disk::kDeleted;
    if (!isAsked) return close();
    if (!fIsModified) {
      EXPECT_THAT(Answer("C", close).text, HasSubstr("The file is no longer on the disk."));
    }
    if (fIsTheirs) {
      Answer({"Y", "C"}, close);
      EXPECT_FALSE(IsClosed());
      EXPECT_EQ(OnDisk(), kTheirs);
      Answer({"Y", "A"}, close);
      EXPECT_THAT(Kept(), ElementsAre(kTheirs));
    } else {
      Answer("Y", close);
    }
    EXPECT_EQ(OnDisk(), fMine);
  }
};

TEST_P(FileOutsideTable, NothingIsOverwrittenSilentlyAndNothingIsAskedForEqualBytes) {
  if (fIsModified) Change();
  StopNotifications();
  ChangeDisk();
  const Event event = std::get<2>(GetParam());
  if (event == Event::kFocus) return Focus();
  if (event == Event::kSave) return SaveAndCheck();
  Close();
  EXPECT_TRUE(IsClosed());
  if (!fIsModified && fIsTheirs) {
    EXPECT_EQ(OnDisk(), kTheirs);
  }
}

INSTANTIATE_TEST_SUITE_P(All, FileOutsideTable,
                         testing::Combine(testing::Bool(),
                                          testing::Values(Disk::kChanged, Disk::kDeleted, Disk::kRenamedOver,
                                                          Disk::kDateOnly),
                                          testing::Values(Event::kFocus, Event::kSave, Event::kClose)));

TEST_F(FileOutside, TheFolderReportsEveryKindOfChangeAndEqualBytesEndTheNotice) {
  Rewrite();
  EXPECT_TRUE(IsNoticed(kChangedText));
  RenameOver("[00:01]mine\n");
  EXPECT_TRUE(IsNoticed(""));
  Rewrite("in place, in the new file\n");
  EXPECT_TRUE(IsNoticed(kChangedText));
  std::filesystem::remove(fPath);
  EXPECT_TRUE(IsNoticed(kMissingText));
  std::filesystem::create_directory(fPath);
  EXPECT_TRUE(IsNoticed("is no longer a file. Please save under another name."));
  std::filesystem::remove(fPath);
  std::filesystem::create_symlink(fFolder.File("nowhere"), fPath);
  EXPECT_TRUE(IsNoticed(kMissingText));
  std::filesystem::remove(fPath);
  Rewrite("[00:01]mine\n");
  EXPECT_TRUE(IsNoticed(""));
  std::filesystem::rename(fFolder.Path() + "/a.lrc", fFolder.Path() + "/moved.lrc");
  EXPECT_TRUE(IsNoticed(kMissingText));
  Click("NoticeButton0"); // Save
  EXPECT_EQ(OnDisk(), std::string("[00:01]mine\n\0", 13));
  EXPECT_TRUE(IsNoticed(""));
}

TEST_F(FileOutside, ReloadIsOneStepThatCanBeUndone) {
  Change();
  Rewrite("[00:01]\x93\xFA\r\n[00:02]two\r\n");
  EXPECT_TRUE(IsNoticed(kChangedText));
  Click("NoticeButton1");
  EXPECT_EQ(Notice(), "");
  EXPECT_THAT(Lines(), ElementsAre("[00:01]日", "[00:02]two"));
  EXPECT_FALSE(IsModified());
  EXPECT_THAT(Status(), HasSubstr("Shift-JIS <CR LF>"));
  EXPECT_THAT(Status(), EndsWith("Reloaded"));
  SendToView(BMessage(kMsgUndo));
  EXPECT_THAT(Lines(), ElementsAre("mine"));
  EXPECT_TRUE(IsModified());
  SendToView(BMessage(kMsgUndo));
  EXPECT_THAT(Lines(), ElementsAre("[00:01]mine"));
  EXPECT_TRUE(IsModified()) << "the file has other lines now";
}

TEST_F(FileOutside, AVersionThatWasKeptOutIsNotMentionedAgainUntilTheSave) {
  Rewrite();
  EXPECT_TRUE(IsNoticed(kChangedText));
  Click("NoticeButton2");
  EXPECT_EQ(Notice(), "");
  Touch();
  Compare();
  EXPECT_EQ(Notice(), "") << "the same bytes as before";
  EXPECT_THAT(Answer("C", [&] { Save(); }).text, HasSubstr("Overwrite that version?"));
  Rewrite("another\n");
  EXPECT_TRUE(IsNoticed(kChangedText));
  Open(fFolder.Write("b.lrc", "b\n"));
  EXPECT_EQ(Notice(), "") << "it was about the file before";
}

TEST_F(FileOutside, DifferencesAreShownInAWindowOfTheirOwn) {
  Rewrite("[00:01]theirs\n[00:02]new\n");
  EXPECT_TRUE(IsNoticed(kChangedText));
  Click("NoticeButton0");
  BWindow& shown = hands::wait_for_window("Differences – a.lrc");
  EXPECT_EQ(hands::spoken(shown, "Differences").name, "- in the file, + in the editor");
  EXPECT_NE(Notice(), "") << "the answer is still due";
  hands::press(shown, "Escape");
  EXPECT_TRUE(hands::until([&] { return !hands::is_shown(shown); }));
}

TEST_F(FileOutside, AVersionThatCannotBeKeptIsNotReplaced) {
  Change();
  Rewrite();
  std::filesystem::permissions(fPath, std::filesystem::perms::owner_write);
  const auto told = Answer({"A", "U"}, [&] { Save(); });
  std::filesystem::permissions(fPath, std::filesystem::perms::owner_all);
  EXPECT_THAT(told.back().text, HasSubstr("Nothing was saved"));
  EXPECT_EQ(OnDisk(), kTheirs);
  EXPECT_TRUE(IsModified());
  std::filesystem::remove(fPath);
  for (const uint32 code : {kMsgReloadFile, kMsgCompareFile})
    EXPECT_THAT(Answer("U", [&] { SendToView(BMessage(code)); }).text, StartsWith("This lyrics file cannot be opened"));
  EXPECT_THAT(Lines(), ElementsAre("mine"));
}

TEST_F(FileOutside, PanelsThatWereOpenedForAnotherDocumentWriteNothing) {
  BMessage answer = SaveAs("chosen.lrc", "Format", 0, "Document", Document());
  Open(fFolder.Write("other.lrc", "[00:02]other\n"));
  for (const uint32 code : {uint32{B_SAVE_REQUESTED}, uint32{kMsgExportTo}}) {
    answer.what = code;
    EXPECT_THAT(Answer("U", [&] { Send(answer); }).text, HasSubstr("opened for another document"));
    EXPECT_FALSE(std::filesystem::exists(fFolder.File("chosen.lrc")));
  }
}

namespace {

/** Records which notices are shown. */
class Board final : public TNoticeBoard {
public:
  void ShowNotice(const TNotice& notice) override { fText = notice.text; }
  void RemoveNotice(int32) override { fText.clear(); }
  bool HasNotice(int32) const override { return !fText.empty(); }
  std::string fText;
};

/** A disk that answers only when the test lets it. */
class SilentDisk : public EditorWorld {
protected:
  SilentDisk() {
    const entry_ref file = {fFolder.Path(), "a.lrc"};
    fFolder.Write("a.lrc", "a\n");
    fDocument.Open(std::move(*open_lyrics(file, file)));
  }
  ~SilentDisk() override { fAnswers.release(10); }

  std::counting_semaphore<100> fAnswers{0};
  TFileLooker::TRead fRead = [this](const std::string& path, int64 maxSize, std::atomic<int64>* progress) {
    fAnswers.acquire();
    return look_at_file(path, maxSize, progress);
  };
  OwnLooper<Keeping<BLooper>> fOwner{new Keeping<BLooper>};
  Board fBoard;
  TDocument fDocument;
};

} // namespace

TEST_F(SilentDisk, IsReportedWithoutWaitingAndForgottenWhenItAnswers) {
  TFileWatch watch(fOwner.get(), &fDocument, &fBoard, {fRead, std::chrono::milliseconds(1)});
  watch.Check();
  EXPECT_EQ(watch.StateNow(), TDiskState::kNoAnswer);
  EXPECT_FALSE(watch.IsGone()) << "closing asks about a file that was removed only";
  EXPECT_EQ(watch.TargetNow(fDocument.File()).now.kind, TFileKind::kNoAnswer);
  watch.Late();
  EXPECT_THAT(fBoard.fText, EndsWith("cannot be checked: the disk or server does not answer."));
  fAnswers.release(50);
  for (int looks = 0; looks < 2 && !fBoard.fText.empty(); ++looks) {
    EXPECT_TRUE(hands::until([&] { return fOwner->DeliverAll() > 0; }));
    for (const BMessage& message : fOwner->Taken())
      if (message.what == kMsgFileLooked) watch.Looked();
  }
  EXPECT_EQ(fBoard.fText, "");
}

TEST_F(SilentDisk, AFileThatHasTheNumberOfTheOneItReplacesIsWatchedInItsPlace) {
  const auto withOneNumber = [](const std::string& path, int64 maxSize, std::atomic<int64>* progress) {
    TFileLook look = look_at_file(path, maxSize, progress);
    if (look.state) look.state->inode = 1;
    return look;
  };
  TFileWatch watch(fOwner.get(), &fDocument, &fBoard, {withOneNumber});
  int looks = 0;
  const auto until = [&](const auto& holds) {
    return hands::until([&] {
      fOwner->DeliverAll();
      for (const BMessage& message : fOwner->Taken()) {
        if (message.what == B_NODE_MONITOR) watch.FolderChanged(message);
        if (message.what == kMsgLookAtFile) watch.CheckNow();
        if (message.what != kMsgFileLooked) continue;
        ++looks;
        watch.Looked();
      }
      return holds();
    });
  };
  watch.Check();
  ASSERT_TRUE(until([&] { return looks == 2; })) << "watched from then on";
  std::filesystem::rename(fFolder.Write("b.tmp", "a\n"), fFolder.File("a.lrc"));
  ASSERT_TRUE(until([&] { return looks == 4; })) << "watched again";
  fFolder.Write("a.lrc", kTheirs);
  EXPECT_TRUE(until([&] { return fBoard.fText.ends_with(kChangedText); }));
}
