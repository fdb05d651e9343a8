#include "journal/document_journal.h"
#include "journal/journal_search.h"
#include "journal/journal_thread.h"
#include "tests/journal/memory_disk.h"
#include "tests/support/messages.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/wait.h>

using namespace testing;

namespace {

constexpr int64 kNowS = 2000000000;
constexpr int64 kDayS = 86400;

mode_t mode_of(const std::string& path) {
  struct stat info {};
  return lstat(path.c_str(), &info) == 0 ? info.st_mode & 0777 : 0;
}

class JournalFolder : public testing::Test {
protected:
  JournalFolder() {
    setenv("XDG_STATE_HOME", fState.File("state").c_str(), 1);
    fFile = fState.Write("a.lrc", "one\n");
    fDocument.StartNew({});
  }
  std::string Path(const std::string& name = "") const { return fState.File("state/KOREVA/VesmoE/Journal/" + name); }
  void Open() {
    const entry_ref ref = ref_of(fFile);
    fDocument.Open(*open_lyrics(ref, ref));
  }
  std::unique_ptr<TDocumentJournal> MakeJournal() {
    return std::make_unique<TDocumentJournal>(
        &fDocument, std::make_unique<TJournalThread>(std::make_unique<TJournalFolder>(), [](TJournalReport) {}));
  }
  void Add(const char* line) { fDocument.Change({0, 0, {line}}, TEditKind::kOther, 0, 0, 0); }
  /** A journal as a killed process leaves it. */
  void Crash() {
    const auto journal = MakeJournal();
    Add("two");
  }
  std::vector<TFoundJournal> Find(int64 nowS = kNowS) const { return find_journals(fFolder, nowS); }
  void SetAge(const std::string& name, int64 ageS) const {
    const timespec times[2] = {{kNowS - ageS, 0}, {kNowS - ageS, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, Path(name).c_str(), times, 0), 0);
  }
  ScratchFolder fState;
  std::string fFile;
  TDocument fDocument;
  TJournalFolder fFolder;
};

} // namespace

TEST_F(JournalFolder, IsPrivateAndIsMadeByTheFirstChangeWhoseJournalIsOfferedWhenItsDocumentIsGone) {
  EXPECT_THAT(Find(), IsEmpty());
  auto journal = MakeJournal();
  EXPECT_EQ(mode_of(fState.File("state")), 0u);
  chmod(fState.Path().c_str(), 0755);
  Add("x");
  while (fFolder.Names().empty()) std::this_thread::yield();
  EXPECT_EQ(mode_of(Path()), 0700u);
  EXPECT_EQ(mode_of(Path(fFolder.Names()[0])), 0600u);
  EXPECT_THAT(Find(), IsEmpty());
  journal.reset();
  const auto found = Find();
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_THAT(Find(), IsEmpty()) << "while it is offered, no other process offers it";
}

TEST_F(JournalFolder, ChangesOfAFileAreFoundAndKnowWhetherItIsStillTheSame) {
  Open();
  Crash();
  {
    const auto found = Find();
    ASSERT_THAT(found, SizeIs(1));
    EXPECT_EQ(found[0].target.path, fFile);
    EXPECT_FALSE(found[0].isFileChanged);
    EXPECT_GT(found[0].lastChangeS, 0);
  }
  fState.Write("a.lrc", "other\n");
  EXPECT_TRUE(Find().at(0).isFileChanged);
  std::filesystem::remove(fFile);
  EXPECT_FALSE(Find().at(0).isFileChanged) << "nothing can be overwritten";
  fState.Write("a.lrc", std::string("two\none\n") + '\0');
  EXPECT_THAT(Find(), IsEmpty()) << "killed after the save: all of it is in the file";
  EXPECT_THAT(fFolder.Names(), IsEmpty());
}

TEST_F(JournalFolder, StrangeThingsInItAreLeftAlone) {
  Crash();
  const std::string real = fFolder.Names()[0];
  std::filesystem::create_symlink(Path(real), Path("1-link-1.journal"));
  std::filesystem::create_directory(Path("1-folder-1.journal"));
  ASSERT_EQ(mkfifo(Path("1-pipe-1.journal").c_str(), 0600), 0);
  std::ofstream(Path("1-noise-1.journal")) << std::string(1000, 'x');
  std::ofstream(Path("1-newer-1.journal")) << std::string("VESMOJNL\x02\0\0\0\x01\0\0\0more, of a later format", 40);
  std::ofstream(Path("1-cut-1.journal")) << "VESMO";
  TJournalFiles unreadable;
  EXPECT_THAT(find_journals(fFolder, kNowS, &unreadable), SizeIs(1));
  EXPECT_THAT(unreadable, SizeIs(2));
  EXPECT_THAT(fFolder.Names(), SizeIs(6)) << "only the one that was cut off before its first change is gone";
}

TEST_F(JournalFolder, FolderOfAnotherIsRefusedAndFilesOfEarlierProcessesAreNeverOverwritten) {
  std::filesystem::create_directories(fState.File("state/KOREVA/VesmoE"));
  std::filesystem::create_directory_symlink(fState.Path(), Path().substr(0, Path().size() - 1));
  EXPECT_EQ(fFolder.Create(), nullptr);
  std::filesystem::remove(Path().substr(0, Path().size() - 1));
  const auto first = fFolder.Create();
  ASSERT_NE(first, nullptr);
  // The next numbers are taken, as after many starts with the same process id.
  const std::string name = fFolder.Names()[0];
  const size_t dash = name.rfind('-');
  const int number = std::stoi(name.substr(dash + 1));
  for (int i = 1; i < 4; ++i)
    std::ofstream(Path(name.substr(0, dash + 1) + std::to_string(number + i) + ".journal")) << "kept";
  ASSERT_NE(fFolder.Create(), nullptr);
  EXPECT_THAT(fFolder.Names(), SizeIs(5));
}

TEST_F(JournalFolder, UnwantedForAMonthItIsAnnouncedOnceAndThenRemoved) {
  Crash();
  const std::string name = fFolder.Names()[0];
  {
    const auto found = Find(kNowS + 1000 * kDayS);
    ASSERT_THAT(found, SizeIs(1)) << "however old, it is offered first";
    EXPECT_FALSE(found[0].expires);
    found[0].file->SetMark(TJournalMark::kOffered);
  }
  SetAge(name + ".offered", 29 * kDayS);
  EXPECT_FALSE(Find().at(0).expires);
  SetAge(name + ".offered", 30 * kDayS);
  {
    const auto found = Find();
    EXPECT_TRUE(found.at(0).expires);
    found[0].file->SetMark(TJournalMark::kExpiryAnnounced);
  }
  SetAge(name + ".expires", kDayS / 2);
  EXPECT_THAT(Find(), SizeIs(1)) << "not on the same day";
  SetAge(name + ".expires", kDayS);
  EXPECT_THAT(Find(), IsEmpty());
  EXPECT_TRUE(std::filesystem::is_empty(Path()));
}

TEST_F(JournalFolder, ASnapshotThatACrashHasCutDoesNotReplaceTheWholeJournalBeforeIt) {
  Crash();
  size_t size = 0;
  TJournalHeader header = *decoded_header(fState.Read("state/KOREVA/VesmoE/Journal/" + fFolder.Names().at(0)), &size);
  ++header.generation;
  std::string bytes = encoded_header(header);
  const auto add = [&](TRecordType type, uint64 number, const std::string& payload) {
    const std::string head = record_head(type, payload.size(), kNowS);
    TRecordDigest digest(header.seed, number, head, payload.size());
    digest.Add(payload);
    fState.Write("state/KOREVA/VesmoE/Journal/1-cut-2.journal", bytes += head + payload + digest.Tail());
  };
  const auto steps = [this] {
    std::vector<size_t> counts;
    for (const TFoundJournal& one : Find())
      counts.push_back(recover_document(*read_journal(*one.file))->history.Steps().size());
    return counts;
  };
  add(TRecordType::kLines, 0, encoded_lines_payload({"two"}));
  EXPECT_THAT(steps(), Contains(1)) << "with its history";
  add(TRecordType::kHistory, 1, encoded_history({}));
  EXPECT_THAT(steps(), ElementsAre(0)) << "when it is complete, it does";
  EXPECT_THAT(fFolder.Names(), SizeIs(1));
}

TEST_F(JournalFolder, AnotherProcessThatHasTheFileOpenOrChangesItIsKnown) {
  EXPECT_FALSE(other_editor_of(fFolder, fFile));
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
  char byte = 0;
  const pid_t other = fork();
  if (other == 0) {
    const auto is_told_to_go_on = [&] { return write(ends[1], &byte, 1) + read(ends[1], &byte, 1) == 2; };
    const auto announced = announce_open(&fFolder, fFile);
    if (!is_told_to_go_on()) _exit(1);
    Open();
    auto journal = MakeJournal();
    Add("x");
    while (fFolder.Names().empty()) std::this_thread::yield();
    if (!is_told_to_go_on()) _exit(1);
    journal.reset();
    _exit(0);
  }
  ASSERT_EQ(read(ends[0], &byte, 1), 1);
  const std::string path = fState.Path() + "/./a.lrc";
  const auto found = other_editor_of(fFolder, path);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->process, other);
  EXPECT_FALSE(found->hasUnsavedChanges);
  EXPECT_FALSE(other_editor_of(fFolder, fState.File("b.lrc")));
  EXPECT_THAT(fFolder.Names(), IsEmpty()) << "no journal before the first change";
  ASSERT_EQ(write(ends[0], &byte, 1) + read(ends[0], &byte, 1), 2);
  EXPECT_TRUE(eventually([&] { return other_editor_of(fFolder, path)->hasUnsavedChanges; }))
      << "or its header is missing";
  ASSERT_EQ(write(ends[0], &byte, 1), 1);
  waitpid(other, nullptr, 0);
  EXPECT_FALSE(other_editor_of(fFolder, fFile)) << "the locks have died with their process";
  EXPECT_THAT(Find(), SizeIs(1));
  const auto own = announce_open(&fFolder, fFile);
  EXPECT_THAT(fFolder.Names(TJournalKind::kOpenDocument), SizeIs(1)) << "what that process left is gone";
  for (const int end : ends) close(end);
}

TEST_F(JournalFolder, ManyStepsAreAllThereWhenTheThreadHasEnded) {
  {
    const auto journal = MakeJournal();
    for (int i = 0; i < 1000; ++i) {
      Add(std::to_string(i).c_str());
      journal->CatchUp();
    }
    journal->CatchUp();
  }
  const auto found = Find();
  ASSERT_THAT(found, SizeIs(1));
  const auto document = recover_document(*read_journal(*found[0].file));
  EXPECT_EQ(document->history.Lines(), fDocument.Lines());
}

namespace {

/** A disk that returns from no write until it is let go, and cannot flush. */
struct HangingDisk : TJournalDisk {
  struct File : MemoryJournal {
    explicit File(std::shared_future<void> until) : release(std::move(until)) {}
    bool Append(std::string_view) override {
      release.wait();
      return true;
    }
    bool Flush() override { return false; }
    const std::shared_future<void> release;
  };
  explicit HangingDisk(std::shared_future<void> until) : release(std::move(until)) {}
  std::shared_ptr<TJournalFile> Create() override { return std::make_shared<File>(release); }
  const std::shared_future<void> release;
};

/** A thread that begins a journal on that disk. */
struct JournalThread : testing::Test {
  void Begin(TJournalWriter::TReporter report, TJournalThread::TTimeouts timeouts = {}) {
    fThread = std::make_unique<TJournalThread>(std::make_unique<HangingDisk>(fRelease.get_future().share()),
                                               std::move(report), timeouts);
    ASSERT_TRUE(fThread->Push(fStart));
  }
  const TJournalStart fStart{{}, 0, std::vector<TJournalAppend>{}};
  std::promise<void> fRelease;
  std::unique_ptr<TJournalThread> fThread;
};

} // namespace

TEST_F(JournalThread, NeverWaitsForADiskThatHangsAndIsBoundedInMemory) {
  Begin([](TJournalReport) {});
  const std::string payload(1000, 'x');
  int accepted = 0;
  while (accepted < 100000 && fThread->Push(TJournalAppend{TRecordType::kTyping, 0, payload})) ++accepted;
  EXPECT_GT(accepted, 100);
  EXPECT_LT(accepted, 2000);
  EXPECT_FALSE(fThread->HasRoom());
  EXPECT_TRUE(fThread->Push(TJournalRest()) && fThread->Push(TJournalClose())) << "the document was saved or closed";
  fRelease.set_value();
}

TEST_F(JournalThread, ADiskThatNeverAnswersDoesNotKeepTheWindowOpen) {
  const auto alive = std::make_shared<int>();
  const std::chrono::milliseconds soon(1);
  Begin([alive](TJournalReport) {}, {soon, soon});
  fThread.reset();
  EXPECT_GT(alive.use_count(), 1) << "what the abandoned thread uses is still there";
  fRelease.set_value();
  EXPECT_TRUE(eventually([&] { return alive.use_count() == 1; }));
}

TEST_F(JournalThread, EveryFlushThatFailsIsReported) {
  std::atomic<int> failures{0};
  fRelease.set_value();
  Begin([&](TJournalReport report) { failures += report == TJournalReport::kFailed; });
  for (const int expected : {1, 2}) {
    EXPECT_TRUE(eventually([&] { return failures >= expected; }));
    EXPECT_TRUE(fThread->Push(fStart));
  }
  fThread.reset(); // before what it reports to
}
