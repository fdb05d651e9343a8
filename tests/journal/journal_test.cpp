#include "lyrics/bulk_tags.h"
#include "tests/journal/memory_disk.h"
#include "tests/support/messages.h"

using namespace testing;
using enum TReplayDirection;

namespace {

/** What a user does: stamps, types, edits lines, changes all lines, goes back and forth, saves. */
void work(JournaledDocument* world, std::mt19937* random) {
  const auto below = [random](size_t bound) { return static_cast<int32>((*random)() % bound); };
  TDocument& document = world->document;
  const auto count = static_cast<int32>(document.Lines().size());
  const int32 row = count > 0 ? below(document.Lines().size()) : 0;
  switch (count > 0 ? below(10) : 0) {
  case 0:
    return world->Change({row, 0, {"new " + std::to_string(below(100)), ""}});
  case 1:
    return world->Change({row, std::min(2, count - row), {"joined"}});
  case 2:
  case 3:
    return world->Change({row, 1, {"[00:" + std::to_string(10 + below(50)) + ":00]sung"}}, TEditKind::kStamp);
  case 4:
  case 5:
    return world->Change({0, 1, {document.Lines()[0] + "x"}}, TEditKind::kTyping);
  case 6: {
    std::list<std::string> lines = document.CopyLines();
    shift_time_tags(&lines, below(5000));
    document.Rewrite(lines, row, world->nowUs);
    return world->HandleReports();
  }
  case 7:
    return below(4) > 0 ? world->Replay(kRedo) : world->Save();
  default:
    return world->Replay(kUndo);
  }
}

std::optional<TRecoveredDocument> recovered(const JournaledDocument& world) {
  const auto named = world.disk.Named();
  if (named.empty()) return {};
  EXPECT_THAT(named, SizeIs(1));
  return recover_document(named.back()->bytes);
}

/** A journal whose records were written one by one, with the lines after each of them. */
struct Journal {
  Journal() {
    TJournalWriter writer(&disk, [](TJournalReport) { FAIL(); });
    TDocument document;
    document.StartNew({});
    const auto write = [&](TJournalCommand command) {
      writer.Execute(std::move(command), 0);
      ends.push_back(disk.files[0]->bytes.size());
    };
    write(
        TJournalStart{{"/a.lrc", {}, {}, {}}, 2, std::vector<TJournalAppend>{{TRecordType::kLines, 1, "one\ntwo\n"}}});
    write(TJournalAppend{TRecordType::kHistory, 1, encoded_history({0, 0})});
    const std::string three = encoded_step({.first = 2, .countAfter = 1, .before = "", .after = "three\n"});
    const std::string typed = encoded_step(
        {.kind = TEditKind::kTyping, .countBefore = 1, .countAfter = 1, .before = "one\n", .after = "ones\n"});
    write(TJournalAppend{TRecordType::kStep, 2, three});
    write(TJournalAppend{TRecordType::kStep, 3, typed});
    write(TJournalAppend{TRecordType::kTyping, 4, "onesy"});
    write(TJournalAppend{TRecordType::kView, 5, encoded_view({1, 2})});
    write(TJournalAppend{TRecordType::kUndo, 6, ""});
    bytes = disk.files[0]->bytes;
  }
  /** After so many records. */
  static std::list<std::string> LinesAfter(size_t records) {
    const std::list<std::string> first{"one", "two"};
    const std::list<std::string> last{"one", "two", "three"};
    const std::list<std::string> states[] = {
        first, first, last, {"ones", "two", "three"}, {"onesy", "two", "three"}, {"onesy", "two", "three"}, last};
    return states[records - 1];
  }
  /** Of the records that end before. */
  size_t RecordsBefore(size_t position) const {
    return static_cast<size_t>(std::count_if(ends.begin(), ends.end(), [=](size_t end) { return end <= position; }));
  }
  MemoryDisk disk;
  std::vector<size_t> ends;
  std::string bytes;
};

void expect_prefix(const std::string& bytes, size_t records) {
  const auto document = recover_document(bytes);
  ASSERT_EQ(document.has_value(), records > 0);
  if (document) {
    ASSERT_EQ(lines_of(*document), Journal::LinesAfter(records));
    ASSERT_EQ(document->nextNumber, records);
    ASSERT_EQ(document->lastChangeS, (std::array{1, 1, 2, 3, 4, 4, 6}[records - 1])) << "a view is no change";
  }
}

} // namespace

TEST(Journal, AnyWorkIsRepeatedExactlyWithItsHistory) {
  SeededRandom random;
  JournaledDocument world;
  for (int i = 0; i < 300; ++i) {
    work(&world, &random);
    world.nowUs += static_cast<bigtime_t>(random() % 2000000);
    const auto document = recovered(world);
    ASSERT_EQ(document.has_value(), world.document.IsModified()) << "after " << i;
    if (!document) continue;
    ASSERT_FALSE(document->isDamaged) << "after " << i;
    ASSERT_EQ(lines_of(*document), world.Lines()) << "after " << i;
    ASSERT_EQ(document->history.SavedAfter(), world.document.History().SavedAfter());
    ASSERT_EQ(document->history.CountDone(), world.document.History().CountDone());
    if (i % 50 == 0) {
      ASSERT_EQ(all_states(document->history), all_states(world.document.History()));
    }
  }
}

TEST(Journal, WorkGoesOnInTheJournalAfterARecovery) {
  JournaledDocument first;
  first.Change({0, 1, {"one"}});
  first.Save();
  first.Change({1, 0, {"two"}});
  first.journal.SetView(2, 1);
  const auto found = first.disk.Named().at(0);
  const auto document = recover_document(found->bytes);
  EXPECT_EQ(document->view.mode, 2);
  EXPECT_EQ(document->view.line, 1);

  JournaledDocument second;
  second.document.Recover({}, document->history);
  second.journal.Continue(found, *document);
  EXPECT_FALSE(found->isNamed) << "the new journal has all of it";
  second.Change({0, 1, {"ONE"}});
  const auto again = recovered(second);
  EXPECT_THAT(lines_of(*again), ElementsAre("ONE", "two"));
  EXPECT_EQ(all_states(again->history), all_states(second.document.History()));
  EXPECT_THAT(all_states(again->history), Contains(ElementsAre(""))) << "as before the save";
  EXPECT_FALSE(again->history.SavedAfter()) << "a document of its own was never saved";
}

TEST(Journal, CutAnywhereItsLongestValidPrefixIsRecovered) {
  const Journal journal;
  for (size_t size = 0; size <= journal.bytes.size(); ++size) {
    SCOPED_TRACE(size);
    expect_prefix(journal.bytes.substr(0, size), journal.RecordsBefore(size));
  }
}

TEST(Journal, DamagedAnywhereNothingIsInventedAndADamagedHeaderCostsOnlyTheName) {
  const Journal journal;
  const size_t headerSize = TJournalReader(journal.bytes).HeaderSize();
  size_t recoveredBits = 0;
  for (size_t bit = 0; bit < journal.bytes.size() * 8; ++bit) {
    SCOPED_TRACE(bit);
    std::string bytes = journal.bytes;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
    const auto document = recover_document(bytes);
    if (bit / 8 < headerSize && document) {
      ++recoveredBits;
      ASSERT_EQ(lines_of(*document), Journal::LinesAfter(journal.ends.size()));
      ASSERT_EQ(document->target.path, "");
      ASSERT_TRUE(document->isDamaged);
    } else {
      expect_prefix(bytes, bit / 8 < headerSize ? 0 : journal.RecordsBefore(bit / 8));
    }
  }
  EXPECT_GT(recoveredBits, headerSize * 8 / 2);
}

TEST(Journal, ARecordThatDoesNotFitTheDocumentEndsIt) {
  const auto is_read = [](TRecordType type, const std::string& payload) {
    MemoryDisk disk;
    TJournalWriter writer(&disk, [](TJournalReport) {});
    writer.Execute(TJournalStart{{},
                                 0,
                                 std::vector<TJournalAppend>{{TRecordType::kLines, 1, "one\ntwo\n"},
                                                             {TRecordType::kHistory, 1, encoded_history({})},
                                                             {type, 1, payload}}},
                   0);
    return recover_document(disk.files[0]->bytes)->nextNumber == 3;
  };
  const TEditStep good{.countBefore = 2, .countAfter = 2, .areHeads = true, .before = "o\n\n", .after = "O\nx\n"};
  TCommonSource source;
  source.AddLine(0, "one");
  const std::pair<TRecordType, std::string> whole[] = {{TRecordType::kStep, encoded_step(good)},
                                                       {TRecordType::kView, encoded_view({1, 2})},
                                                       {TRecordType::kTarget, encoded_target({})},
                                                       {TRecordType::kSource, encoded_source(source)}};
  for (const auto& [type, payload] : whole) {
    EXPECT_TRUE(is_read(type, payload));
    EXPECT_FALSE(is_read(type, payload + "x") || is_read(type, payload.substr(1))) << payload;
  }
  source.AddLine(1, "two\nthree");
  EXPECT_FALSE(is_read(TRecordType::kSource, encoded_source(source)));
  EXPECT_FALSE(is_read(TRecordType::kTyping, "x")) << "nothing was typed before";
  EXPECT_FALSE(is_read(TRecordType::kUndo, ""));
  const std::function<void(TEditStep*)> faults[] = {
      [](TEditStep* step) { step->first = 1; },
      [](TEditStep* step) { step->first = -1; },
      [](TEditStep* step) { step->countBefore = INT32_MAX; },
      [](TEditStep* step) { step->countBefore = -1; },
      [](TEditStep* step) { step->before = "x\n\n"; },
      [](TEditStep* step) { step->before = "only me too long\n\n"; },
      [](TEditStep* step) { step->after = "one\n"; },
      [](TEditStep* step) { step->areHeads = false; },
  };
  for (const auto& fault : faults) {
    TEditStep step = good;
    fault(&step);
    EXPECT_FALSE(is_read(TRecordType::kStep, encoded_step(step))) << &fault - faults;
  }
}

TEST(Journal, APowerCutLosesAtMostASecond) {
  SeededRandom random;
  JournaledDocument world;
  constexpr bigtime_t kTickUs = 50000;
  constexpr int kFlushTicks = 10; // a slow disk: half a second
  std::shared_ptr<TJournalFile> flushing;
  int flushTicks = 0;
  std::deque<std::pair<std::list<std::string>, bool>> states; // of the last second: lines, and if they were unsaved
  for (int tick = 0; tick < 2000; ++tick, world.nowUs += kTickUs) {
    if (random() % 8 == 0) work(&world, &random);
    if (flushing && ++flushTicks >= kFlushTicks) std::exchange(flushing, {})->Flush();
    if (!flushing) {
      flushTicks = 0;
      flushing = world.writer.TakeDueFlush(world.nowUs);
    }
    states.emplace_back(world.Lines(), world.document.IsModified());
    if (states.size() > 1000000 / kTickUs) states.pop_front();
    const bool isUnsaved = std::all_of(states.begin(), states.end(), [](const auto& state) { return state.second; });
    if (!isUnsaved || states.size() < 1000000 / kTickUs || random() % 10 != 0) continue;
    const auto file = world.disk.Named().at(0);
    const auto document = recover_document(file->bytes.substr(0, file->flushed));
    ASSERT_TRUE(document) << "at tick " << tick;
    const auto is_it = [&](const auto& state) { return state.first == lines_of(*document); };
    ASSERT_TRUE(std::any_of(states.begin(), states.end(), is_it)) << "at tick " << tick;
  }
}

TEST(Journal, ADiskThatIsFullAtAnyByteCostsNoMoreThanTheStepsSince) {
  for (size_t room = 0; room < 900; room += 7) {
    JournaledDocument world;
    world.disk.room = room;
    std::vector<std::list<std::string>> states{world.Lines()};
    for (const char* line : {"one", "two", "three"}) {
      world.Change({0, 0, {line}});
      states.push_back(world.Lines());
    }
    const auto document = recovered(world);
    if (document) {
      EXPECT_THAT(states, Contains(lines_of(*document))) << room;
    }
    const bool isWhole = document && lines_of(*document) == world.Lines();
    if (isWhole) continue;
    world.disk.room = SIZE_MAX; // other files were deleted
    world.journal.CatchUp();
    EXPECT_EQ(recovered(world).has_value(), document.has_value()) << "not at once: each attempt copies the document";
    world.nowUs += 10000000;
    world.journal.CatchUp();
    ASSERT_TRUE(recovered(world)) << room;
    EXPECT_EQ(lines_of(*recovered(world)), world.Lines()) << room;
    EXPECT_THAT(world.reports, Contains(TJournalReport::kWorksAgain));
    const auto named = world.disk.Named().at(0);
    if (document) {
      EXPECT_EQ(named->flushed, named->bytes.size()) << "on the disk before the previous one is removed";
    }
    EXPECT_EQ(all_states(recovered(world)->history), all_states(world.document.History()));
  }
}

TEST(Journal, FileThatWasOpenedIsTheBaseUnlessItHasChanged) {
  const ScratchFolder folder;
  const std::string opened = "one\r\ntwo\r\n", path = folder.Write("a.lrc", opened);
  const entry_ref file = ref_of(path);
  for (const std::string now : {"one\r\ntwo\r\n", "short\n", "OTHER\n1234", "one\r\ntwo\r\nand more\n"}) {
    SCOPED_TRACE(now);
    JournaledDocument world;
    folder.Write("a.lrc", opened);
    world.document.Open(*open_lyrics(file, file));
    folder.Write("a.lrc", now);
    world.Change({0, 1, {"ONE"}});
    world.Change({2, 0, {"three"}});
    const auto document = recovered(world);
    EXPECT_THAT(lines_of(*document), ElementsAre("ONE", "two", "three"));
    EXPECT_EQ(world.disk.Named().at(0)->bytes.find("one\r\ntwo") != std::string::npos, now == opened);
    EXPECT_EQ(document->target.path, path);
    EXPECT_EQ(document->target.form.lineEnd, TLineEnd::kCrLf);
    EXPECT_TRUE(document->target.state->HasBytesOf(*world.document.StateOnDisk()));
    EXPECT_EQ(all_states(document->history).front().size(), 3u);
    EXPECT_THAT(all_states(document->history), Contains(ElementsAre("one", "two")));
  }
}

TEST(Journal, GoesWithTheDocumentUnlessUnsavedChangesWouldBeLost) {
  enum { kNothing, kSaved, kUndone, kClosed, kLossAllowed, kChangedAfterThat };
  for (const int how : {kNothing, kSaved, kUndone, kClosed, kLossAllowed, kChangedAfterThat}) {
    auto world = std::make_unique<JournaledDocument>();
    world->Change({0, 1, {"one"}});
    const auto file = world->disk.Named().at(0);
    if (how == kSaved) world->document.Saved(world->document.PlanSave({}, {}, {}), {});
    if (how == kUndone) world->Replay(kUndo);
    if (how == kClosed) world->document.StartNew({});
    if (how >= kLossAllowed) world->journal.AllowLoss();
    if (how == kChangedAfterThat) world->Change({0, 1, {"two"}});
    world.reset();
    EXPECT_EQ(file->isNamed, how == kNothing || how == kChangedAfterThat) << how;
  }
}

TEST(Journal, BehindItsDocumentItBeginsAgainWithEverything) {
  struct FullQueue : DirectQueue {
    using DirectQueue::DirectQueue;
    bool Push(TJournalCommand command) override {
      refused += isFull;
      return !isFull && DirectQueue::Push(std::move(command));
    }
    bool HasRoom() override { return !isFull; }
    bool isFull = false;
    int refused = 0;
  };
  JournaledDocumentOn<MemoryDisk, FullQueue> world;
  world.Change({0, 0, {"one"}});
  world.queue->isFull = true;
  for (const char* line : {"two", "three"}) world.Change({0, 0, {line}});
  EXPECT_EQ(world.queue->refused, 1) << "no copy of the document is made that would be refused";
  world.queue->isFull = false;
  world.Change({0, 0, {"four"}});
  ASSERT_THAT(world.disk.Named(), SizeIs(1));
  const auto found = recover_document(world.disk.Named()[0]->bytes);
  EXPECT_THAT(lines_of(*found), ElementsAre("four", "three", "two", "one", ""));
  EXPECT_EQ(all_states(found->history), all_states(world.document.History()));
}

TEST(Journal, ThousandthsOfACommonFileComeBackWithTheLines) {
  const ScratchFolder folder;
  const std::string bytes = "\xEF\xBB\xBF[00:01.234]a\n[0:02.5]b";
  const entry_ref ref = ref_of(folder.Write("a.lrc", bytes));
  const auto open = [&] { return *open_lyrics(ref, ref); };
  const auto saved_after_crash = [](const JournaledDocument& world) {
    const auto found = recovered(world);
    return found ? encoded_lines(found->history.Lines(), found->target.form, found->source) : std::string("no journal");
  };
  JournaledDocument fromFile;
  fromFile.document.Open(open());
  fromFile.Change({0, 0, {"[00:09:00]new"}});
  EXPECT_EQ(saved_after_crash(fromFile), "\xEF\xBB\xBF[00:09.00]new\n[00:01.234]a\n[0:02.5]b");

  folder.Write("a.lrc", "[00:05:00]family\n[00:06.00]mixed\n");
  JournaledDocument unified;
  unified.document.Open(open());
  unified.document.Unify(TDialect::kCommon, 0, 1);
  unified.HandleReports();
  EXPECT_EQ(saved_after_crash(unified), "[00:05.00]family\n[00:06.00]mixed\n");
  unified.Save(ref_of(folder.File("b.lrc")));
  unified.Change({0, 0, {"new"}});
  EXPECT_EQ(recovered(unified)->target.path, folder.File("b.lrc")) << "not what an earlier record names";

  JournaledDocument reloaded;
  reloaded.document.Open(open());
  reloaded.Change({0, 1, {"mine"}});
  folder.Write("a.lrc", bytes);
  reloaded.document.Reload(open(), 0, 1);
  reloaded.Change({2, 0, {"c"}});
  EXPECT_EQ(saved_after_crash(reloaded), bytes + "\nc");

  JournaledDocument snapshot;
  snapshot.document.Open(open());
  folder.Write("a.lrc", "other bytes"); // so that the file cannot be the base
  snapshot.Change({2, 0, {"c"}});
  EXPECT_EQ(saved_after_crash(snapshot), bytes + "\nc");
}
