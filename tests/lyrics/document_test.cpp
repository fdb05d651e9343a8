#include "lyrics/document.h"

#include "lyrics/stamp.h"
#include "tests/support/messages.h"

using namespace testing;
using enum TReplayDirection;

namespace {

constexpr TLyricsForm kSjisCrLf{TEncoding::kShiftJis, TLineEnd::kCrLf};

/** Applies what it is notified of to lines of its own, which must then be the document's. */
struct Follower : TDocumentObserver {
  explicit Follower(const TDocument& document) : fDocument(document) {}
  void LinesChanged(const TLinesChange& change) override {
    const auto first = fLines.begin() + change.first;
    fLines.insert(fLines.erase(first, first + change.removed), change.lines.begin(), change.lines.end());
    EXPECT_EQ(fLines, fDocument.Lines());
    ++fSteps;
  }
  void DocumentReplaced() override { fLines = fDocument.Lines(); }
  std::vector<std::string> fLines;
  int fSteps = 0;

private:
  const TDocument& fDocument;
};

struct Document : testing::Test {
  Document() { fDocument.SetObserver(&fFollower); }
  /** Writes the file and opens it. */
  entry_ref Open(const std::string& bytes, const char* name = "a.lrc") {
    const entry_ref ref = ref_of(fFolder.Write(name, bytes));
    std::optional<TOpenedLyrics> opened = open_lyrics(ref, ref);
    EXPECT_TRUE(opened.has_value());
    if (opened) fDocument.Open(*opened);
    return ref;
  }
  void Replace(int32 row, const std::string& line, TEditKind kind = TEditKind::kOther) {
    EXPECT_TRUE(fDocument.Change({row, 1, {line}}, kind, row, row, 0));
  }
  void Replay(TReplayDirection direction) {
    if (const std::optional<TReplay> next = fDocument.Next(direction)) fDocument.Replay(direction, *next);
  }
  TFileLook Look(const entry_ref& file) const { return look_at_file(file.FullPath(), kMaxLyricsFileSize); }
  TDiskState Compare() const { return fDocument.CompareWithDisk(Look(fDocument.File())); }
  TSavePlan Plan(const entry_ref& file, const TLyricsForm& form) const {
    return fDocument.PlanSave(file, form, {file == fDocument.File(), Look(file)});
  }
  /** As a save does it. */
  TSavePlan Save(const entry_ref& file, const TLyricsForm& form) {
    const TSavePlan plan = Plan(file, form);
    fFolder.Write(file.name, plan.bytes);
    fDocument.Saved(plan, Look(file).state);
    return plan;
  }
  ScratchFolder fFolder;
  TDocument fDocument;
  Follower fFollower{fDocument};
};

} // namespace

TEST_F(Document, OpenedFileKeepsItsFormAndANewOneTakesTheGiven) {
  const entry_ref file = Open("\x93\xfa\r\nb\r\n");
  EXPECT_THAT(fDocument.Lines(), ElementsAre("日", "b"));
  EXPECT_EQ(fDocument.Form(), kSjisCrLf);
  EXPECT_EQ(fDocument.File(), file);
  EXPECT_EQ(fDocument.Bytes(fDocument.Form()), "\x93\xfa\r\nb\r\n");
  EXPECT_EQ(fDocument.Info().CRType, 1);
  EXPECT_EQ(fDocument.Info().Encoding, 1);
  Open("\xEF\xBB\xBFx\n");
  EXPECT_THAT(fDocument.Lines(), ElementsAre("x")) << "the byte-order mark is no text";
  fDocument.StartNew(kSjisCrLf);
  EXPECT_THAT(fFollower.fLines, ElementsAre(""));
  EXPECT_TRUE(fDocument.File().IsEmpty());
  EXPECT_FALSE(fDocument.StateOnDisk());
  EXPECT_EQ(fDocument.Form(), kSjisCrLf);
}

TEST_F(Document, EveryStepIsPublishedInBothDirections) {
  Open("one\ntwo\n");
  Replace(1, "[00:01:00]two", TEditKind::kStamp);
  EXPECT_TRUE(fDocument.Change({1, 0, {"x", "y"}}, TEditKind::kTyping, 1, 2, 0));
  fDocument.Rewrite({"[00:02:00]one", "y"}, 0, 0);
  EXPECT_FALSE(fDocument.Change({9, 1, {"z"}}, TEditKind::kOther, 0, 0, 0));
  EXPECT_EQ(fFollower.fLines, fDocument.Lines());
  while (fDocument.CanReplay(kUndo)) Replay(kUndo);
  EXPECT_THAT(fDocument.Lines(), ElementsAre("one", "two"));
  EXPECT_FALSE(fDocument.IsModified());
  while (fDocument.CanReplay(kRedo)) Replay(kRedo);
  EXPECT_THAT(fDocument.Lines(), ElementsAre("[00:02:00]one", "y"));
  EXPECT_EQ(fFollower.fSteps, 8);
  Replay(kRedo); // nothing left
  EXPECT_EQ(fFollower.fSteps, 8);
}

TEST_F(Document, SavedStateIsModifiedAgainByUndoAndAFailedSaveByEverything) {
  const entry_ref file = Open("a\n");
  Replace(0, "b");
  EXPECT_EQ(Save(file, fDocument.Form()).bytes, std::string("b\n\0", 3));
  EXPECT_FALSE(fDocument.IsModified());
  Replay(kUndo);
  EXPECT_TRUE(fDocument.IsModified());
  Replay(kRedo);
  EXPECT_FALSE(fDocument.IsModified());
  fDocument.SaveFailed();
  EXPECT_TRUE(fDocument.IsModified());
  Replace(0, "c");
  Replay(kUndo);
  EXPECT_TRUE(fDocument.IsModified()) << "no state is known to be on the disk";
}

TEST_F(Document, LossesOfASaveAreKnownBeforeItAndNewOnlyOnce) {
  const entry_ref file = Open("日é\n한é\n");
  EXPECT_THAT(Plan(file, {}).lostCharacters, IsEmpty());
  const TSavePlan planned = Plan(file, kSjisCrLf);
  EXPECT_THAT(planned.lostCharacters, ElementsAre("é", "한"));
  EXPECT_EQ(planned.bytes, "\x93\xfa\x1A\r\n\x1A\x1A\r\n");
  EXPECT_THAT(Plan(file, kSjisCrLf).newLostCharacters, ElementsAre("é", "한")) << "only planned, not saved";
  Save(file, kSjisCrLf);
  EXPECT_EQ(fDocument.Form(), kSjisCrLf);
  EXPECT_THAT(Plan(file, kSjisCrLf).newLostCharacters, IsEmpty());
  Replace(0, "日éñ");
  EXPECT_THAT(Plan(file, kSjisCrLf).newLostCharacters, ElementsAre("ñ")) << "the others are known";
  EXPECT_THAT(Plan(file, {TEncoding::kJis, {}}).newLostCharacters, ElementsAre("é", "ñ", "한")) << "another encoding";
  EXPECT_THAT(Plan(ref_of(fFolder.File("b.lrc")), kSjisCrLf).newLostCharacters, ElementsAre("é", "ñ", "한"));
  Replace(0, "日");
  Save(file, kSjisCrLf);
  Replace(0, "日é");
  EXPECT_THAT(Plan(file, kSjisCrLf).newLostCharacters, IsEmpty()) << "lost in an earlier save of this file";
  Replace(0, "日ñ");
  Save(file, kSjisCrLf);
  Replace(0, "日");
  const entry_ref other = ref_of(fFolder.File("b.lrc"));
  Save(other, kSjisCrLf);
  EXPECT_EQ(fDocument.File(), other);
  Replace(0, "日ñ");
  EXPECT_THAT(Plan(other, kSjisCrLf).newLostCharacters, ElementsAre("ñ")) << "lost in another file only";
  Open("é한\n");
  EXPECT_THAT(Plan(file, kSjisCrLf).newLostCharacters, ElementsAre("é", "한")) << "of another document";
}

TEST_F(Document, WhatWasNotReadIsLostOnlyInItsOwnFileAndNotByTheNextDocument) {
  const entry_ref file = Open(std::string("a\n\0tail\n", 8));
  EXPECT_EQ(fDocument.Unread().tailBytes, 5);
  EXPECT_EQ(Plan(file, {}).unread.tailBytes, 5);
  const entry_ref link = ref_of(fFolder.File("link.lrc"));
  std::filesystem::create_symlink(file.FullPath(), link.FullPath());
  EXPECT_TRUE(Look(link).state->IsSameFile(*fDocument.StateOnDisk()));
  EXPECT_EQ(fDocument.PlanSave(link, {}, {true, Look(link)}).unread.tailBytes, 5) << "its own file by another name";
  EXPECT_FALSE(Plan(ref_of(fFolder.File("b.lrc")), {}).unread.Any());
  std::filesystem::remove(file.FullPath());
  EXPECT_FALSE(Plan(file, {}).unread.Any()) << "nothing left to lose";
  fDocument.StartNew({});
  EXPECT_FALSE(fDocument.Unread().Any());
  Open(std::string("a\n\0tail\n", 8));
  Save(file, {});
  EXPECT_FALSE(Plan(file, {}).unread.Any());
}

TEST_F(Document, FileIsComparedByItsBytes) {
  const entry_ref file = Open("a\nb\n");
  EXPECT_EQ(Compare(), TDiskState::kUnchanged);
  std::filesystem::remove(file.FullPath());
  EXPECT_EQ(Compare(), TDiskState::kMissing);
  fFolder.Write("a.lrc", "a\nb\n"); // another file, another time
  EXPECT_EQ(Compare(), TDiskState::kUnchanged);
  for (const char* bytes : {"a\nc\n", "a\nb\n\n", "", "b\na\n"}) {
    fFolder.Write("a.lrc", bytes);
    EXPECT_EQ(Compare(), TDiskState::kChanged) << testing::PrintToString(bytes);
  }
  EXPECT_TRUE(Plan(file, {}).overwrites);
  EXPECT_FALSE(fDocument.PlanSave(file, {}, {false, Look(file)}).overwrites);
  Save(file, {});
  EXPECT_EQ(Compare(), TDiskState::kUnchanged);
  const std::pair<TFileKind, TDiskState> rows[] = {{TFileKind::kTooLarge, TDiskState::kChanged},
                                                   {TFileKind::kFolderMissing, TDiskState::kFolderMissing},
                                                   {TFileKind::kNotRegular, TDiskState::kNotRegular},
                                                   {TFileKind::kUnreadable, TDiskState::kUnreadable},
                                                   {TFileKind::kNoAnswer, TDiskState::kNoAnswer}};
  for (const auto& [kind, state] : rows) EXPECT_EQ(fDocument.CompareWithDisk({kind, {}}), state);
  fDocument.StartNew({});
  EXPECT_EQ(fDocument.CompareWithDisk({}), TDiskState::kUnchanged) << "it has no file";
}

TEST_F(Document, RecoveredLinesAreNotSavedInTheFile) {
  const entry_ref file = ref_of(fFolder.Write("a.lrc", "half"));
  const entry_ref copy = ref_of(fFolder.Write("copy.lrc", "the whole\n"));
  std::optional<TOpenedLyrics> opened = open_lyrics(file, copy);
  ASSERT_TRUE(opened.has_value());
  fDocument.Open(*opened);
  EXPECT_THAT(fDocument.Lines(), ElementsAre("the whole"));
  EXPECT_EQ(fDocument.File(), file);
  EXPECT_TRUE(fDocument.IsModified());
  EXPECT_EQ(Compare(), TDiskState::kUnchanged) << "the file itself is as it was";
  EXPECT_FALSE(open_lyrics(file, ref_of(fFolder.File("missing"))).has_value());
}

TEST_F(Document, AMillionLinesAreOpenedChangedAndUndone) {
  std::string bytes;
  for (int i = 0; i < 1000000; ++i) bytes += "line\n";
  Open(bytes);
  ASSERT_EQ(fDocument.Lines().size(), 1000000U);
  fDocument.SetObserver(nullptr);
  const std::string* const untouched = &fDocument.Lines()[7];
  Replace(999999, stamp("line", 1234, TTagForm::kExtended).line, TEditKind::kStamp);
  EXPECT_EQ(fDocument.Lines().back(), "[00:01:23]line");
  Replay(kUndo);
  EXPECT_FALSE(fDocument.IsModified());
  EXPECT_EQ(&fDocument.Lines()[7], untouched) << "one line's change copies no other";
}

TEST(FileState, LookTellsWhatIsUnderThePath) {
  const ScratchFolder folder;
  EXPECT_EQ(look_at_file(folder.File("a"), 10).kind, TFileKind::kMissing);
  EXPECT_EQ(look_at_file(folder.File("no/a"), 10).kind, TFileKind::kFolderMissing);
  EXPECT_EQ(look_at_file(folder.Write("file", "x") + "/a", 10).kind, TFileKind::kFolderMissing);
  EXPECT_EQ(look_at_file(folder.Path(), 10).kind, TFileKind::kNotRegular);
  EXPECT_EQ(look_at_file("/dev/zero", 10).kind, TFileKind::kNotRegular);
  EXPECT_EQ(look_at_file(folder.Write("large", std::string(11, 'a')), 10).kind, TFileKind::kTooLarge);
  std::filesystem::permissions(folder.Write("closed", "x"), std::filesystem::perms::none);
  EXPECT_EQ(look_at_file(folder.File("closed"), 10).kind, TFileKind::kUnreadable);
  std::string bytes(1000001, '\0'); // more than one part, and no multiple of a word
  for (size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<char>(i * 7);
  std::atomic<int64> progress{0};
  const TFileLook look = look_at_file(folder.Write("a", bytes), 2000000, &progress);
  EXPECT_EQ(look.kind, TFileKind::kRegular);
  EXPECT_EQ(look.state->digest, digest_of(bytes)) << "the same, read in parts";
  EXPECT_GT(progress, 1000000);
}

TEST(FileState, DigestIsStableAndSeesEveryBit) {
  EXPECT_EQ(digest_of("[00:01:00]a line\n"), 8721271709003760139U)
      << "computed independently; stored digests stay valid";
  std::string bytes = "0123456789abcdef0123";
  const uint64 before = digest_of(bytes);
  for (size_t bit = 0; bit < bytes.size() * 8; ++bit) {
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    EXPECT_NE(digest_of(bytes), before) << bit;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
  }
  EXPECT_NE(digest_of(std::string(8, '\0')), digest_of(std::string(9, '\0')));
}

TEST(Stamp, ReplacesATagInTheGivenFormAndSaysByHowMuchItMoved) {
  const std::tuple<const char*, TTagForm, const char*, std::optional<long>> rows[] = {
      {"a", TTagForm::kExtended, "[00:11:99]a", {}},
      {"[00:10:50]a", TTagForm::kStandard, "[00:11]a", 1499}, // before it is cut to the form
      {"[00:20]a", TTagForm::kExtended, "[00:11:99]a", -8001},
      {"[a", TTagForm::kExtended, "[00:11:99][a", {}},
      {"[Chorus]", TTagForm::kExtended, "[00:11:99]", 11999}};
  for (const auto& [line, form, made, movedByMs] : rows) {
    const TStampedLine stamped = stamp(line, 11999, form);
    EXPECT_EQ(stamped.line, made);
    EXPECT_EQ(stamped.movedByMs, movedByMs) << line;
  }
}

TEST(Nudge, MovesATagByOneUnitOfItsOwnForm) {
  const std::pair<const char*, const char*> rows[] = {
      {"[00:10]a", "[00:11]a"}, {"[00:10:00]a", "[00:10:01]a"}, {"[99:59:99]a", "[99:59:99]a"}};
  for (const auto& [line, later] : rows) EXPECT_EQ(nudge(line, true)->line, later);
  EXPECT_EQ(nudge("[00:00:00]a", false)->line, "[00:00:00]a");
  EXPECT_EQ(nudge("[00:00:00]a", false)->timeMs, -10) << "unbounded";
  EXPECT_EQ(nudge("[00:10]a", false)->stepMs, -1000);
  EXPECT_FALSE(nudge("a", true).has_value());
}
