/** Every system call of a journal made to fail, or to be the last one of the process. */

#include "journal/journal_search.h"
#include "tests/faults/fault_table.h"
#include "tests/journal/memory_disk.h"
#include "tests/support/messages.h"

#include <sys/mman.h>

using namespace testing;

namespace {

using Lines = std::list<std::string>;
using RecordedDocument = JournaledDocumentOn<TJournalFolder>;

class JournalFaults : public testing::Test {
protected:
  JournalFaults() { setenv("XDG_STATE_HOME", fFolder.File("state").c_str(), 1); }
  ~JournalFaults() override { munmap(fStepsDone, sizeof(int)); }

  void Prepare() {
    std::filesystem::remove_all(fFolder.File("state"));
    fPath = fFolder.Write("a.lrc", "one\n");
    fStates.clear();
    *fStepsDone = 0;
  }
  /** Edits and a save, each a step. The document is not saved afterwards. */
  void Work(RecordedDocument* world) {
    const entry_ref ref = ref_of(fPath);
    world->document.Open(*open_lyrics(ref, ref));
    const auto step = [&](const std::function<void()>& act) {
      act();
      fStates.push_back(world->Lines());
      ++*fStepsDone;
    };
    const auto change = [&](const char* line) { world->Change({0, 1, {line}}); };
    step([] {});
    step([&] { change("two"); });
    step([&] { world->Flush(); });
    step([&] { world->Save(); });
    step([&] { change("three"); });
    step([&] { change("four"); });
    step([&] { world->Flush(); });
    step([&] { world->Replay(TReplayDirection::kUndo); });
    world->Flush();
  }
  /** What the next process finds; nothing for a document without unsaved changes. */
  static std::optional<Lines> Found() {
    const auto found = find_journals(TJournalFolder(), 0);
    EXPECT_LE(found.size(), 1u);
    if (found.empty()) return {};
    const auto document = recover_document(*read_journal(*found[0].file));
    return document ? lines_of(*document) : Lines();
  }
  /** Works with failing calls; false when there are no further calls. */
  bool WorkFailing(int call, const Error& error, bool areAll, bool goesOn) {
    SCOPED_TRACE(std::to_string(call) + ", " + error.name + (areAll ? " from then on" : "") +
                 (goesOn ? ", goes on" : ""));
    Prepare();
    bool isTold = false;
    {
      RecordedDocument world;
      failing_calls::arm(fFolder.Path(), call, error.number, failing_calls::Fate::kFails, areAll);
      Work(&world);
      failing_calls::disarm();
      isTold = world.isUserTold;
      if (goesOn) {
        world.nowUs += 10000000;
        world.Change({0, 1, {"later"}});
        fStates.push_back(world.Lines());
      }
    }
    const std::optional<Lines> found = Found();
    const bool isAllThere = found == fStates.back();
    EXPECT_TRUE(isAllThere || (isTold && !goesOn)) << testing::PrintToString(found);
    if (found) {
      EXPECT_THAT(fStates, Contains(*found));
    }
    EXPECT_TRUE(isTold || !failing_calls::failed_call().ends_with("sync")) << "it may not be on the disk";
    EXPECT_EQ(fFolder.Read("a.lrc"), "one\n");
    if (!goesOn) {
      report(std::string("journal") + (areAll ? ", all calls from" : ""), call, failing_calls::failed_call(),
             error.name,
             std::string(isAllThere ? "every step"
                         : found    ? "steps so far"
                                    : "no journal") +
                 (isTold ? ", told" : ""));
    }
    return !failing_calls::failed_call().empty();
  }

  ScratchFolder fFolder;
  std::string fPath;
  std::vector<Lines> fStates;
  int* const fStepsDone = static_cast<int*>(
      mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)); // of a child process, too
};

} // namespace

TEST_F(JournalFaults, CostNothingButTheStepsThatTheUserIsToldOfAndEditingGoesOn) {
  for (const Error& error : errors()) {
    for (const bool areAll : {false, true}) {
      int call = 1;
      while (call < kMostCalls && WorkFailing(call, error, areAll, false) && WorkFailing(call, error, areAll, true))
        ++call;
      EXPECT_GT(call, 10) << "no calls were counted";
      EXPECT_LT(call, kMostCalls);
    }
  }
}

TEST_F(JournalFaults, AKillAtAnyCallCostsAtMostTheStepInFlight) {
  int call = 1;
  for (bool isKilled = true; isKilled && call < kMostCalls; ++call) {
    Prepare();
    isKilled = killed_at(call, fFolder.Path(), [this] {
      RecordedDocument world;
      Work(&world);
    });
    const auto done = static_cast<size_t>(*fStepsDone);
    const std::optional<Lines> found = Found();
    {
      RecordedDocument world; // for fStates: the child had its own
      Work(&world);
    }
    const bool mayBeSaved = done <= 1 || done == 3 || done == 4;
    const size_t inFlight = std::min(done, fStates.size() - 1);
    EXPECT_TRUE(found ? *found == fStates[std::max<size_t>(done, 1) - 1] || *found == fStates[inFlight] : mayBeSaved)
        << call << " " << done;
    report("killed journal", call, "", "-", found ? "the steps so far" : "no unsaved changes");
  }
  EXPECT_GT(call, 10) << "no calls were counted";
}
