/** What the journal costs: a stamp and a shift of all lines on 100 000 lines, in documents with and without a journal
   in turn, the start of the editor's search for journals, and memory. */

#include "bench/rounds.h"
#include "journal/document_journal.h"
#include "journal/journal_search.h"
#include "journal/journal_thread.h"
#include "lyrics/bulk_tags.h"

#include <malloc.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <thread>

namespace {

constexpr int kLines = 100000;
constexpr int kStamps = 2000;
constexpr int kShifts = 20;
constexpr int kStarts = 21;
/** A very fast user. */
constexpr std::chrono::milliseconds kPause{2};

TOpenedLyrics write_document(const std::string& folder) {
  const std::string path = folder + "/long.lrc";
  std::ofstream file(path);
  for (int i = 0; i < kLines; ++i) file << "[00:10:00]This is line " << i << ", sung to the end of it\n";
  file.close();
  entry_ref ref;
  get_ref_for_path(path.c_str(), &ref);
  return *open_lyrics(ref, ref);
}

std::unique_ptr<TDocumentJournal> make_journal(TDocument* document) {
  const auto report = [](TJournalReport what) {
    if (what == TJournalReport::kFailed) std::fputs("the journal failed\n", stderr);
  };
  return std::make_unique<TDocumentJournal>(
      document, std::make_unique<TJournalThread>(std::make_unique<TJournalFolder>(), report));
}

double stamp(TDocument* document, int number) {
  const auto row = static_cast<int32>(static_cast<int64>(number) * 7919 % kLines);
  const TLinesChange change{row, 1, {"[00:11:22]This is line " + std::to_string(row) + ", sung to the end of it"}};
  return 1e3 * seconds_of([&] { document->Change(change, TEditKind::kStamp, row, row + 1, system_time()); });
}

double shift(TDocument* document) {
  std::list<std::string> lines = document->CopyLines();
  shift_time_tags(&lines, 10);
  return 1e3 * seconds_of([&] { document->Rewrite(lines, 0, system_time()); });
}

void print(const char* name, const std::vector<double>& with, const std::vector<double>& without) {
  const auto worst = [](const std::vector<double>& values) { return *std::max_element(values.begin(), values.end()); };
  std::printf("%-34s %9.4f %9.4f   %9.4f %9.4f\n", name, median(with), worst(with), median(without), worst(without));
}

long resident_kb() {
  malloc_trim(0);
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

void measure(const std::string& folder) {
  const TOpenedLyrics opened = write_document(folder);
  TDocument plain;
  TDocument journaled;
  plain.Open(opened);
  journaled.Open(opened);
  const auto journal = make_journal(&journaled);
  std::vector<double> with, without, shiftWith, shiftWithout, start;
  long before = 0;
  for (int i = 0; i < kStamps; ++i) {
    without.push_back(stamp(&plain, i));
    if (i == 0) before = resident_kb();
    with.push_back(stamp(&journaled, i)); // the first one begins the journal
    std::this_thread::sleep_for(kPause);
  }
  const long after = resident_kb();
  for (int i = 0; i < kShifts; ++i) {
    // The first of two pays for the caches.
    if (i % 2 == 0) shiftWithout.push_back(shift(&plain));
    shiftWith.push_back(shift(&journaled));
    if (i % 2 == 1) shiftWithout.push_back(shift(&plain));
    std::this_thread::sleep_for(100 * kPause);
  }
  for (int i = 0; i < kStarts; ++i) {
    TDocument document;
    std::thread search;
    start.push_back(1e3 * seconds_of([&] {
                      const auto unused = make_journal(&document);
                      search = std::thread([] { find_journals(TJournalFolder(), 0); });
                    }));
    search.join();
  }
  std::printf("%-34s %19s   %19s\n%-34s %9s %9s   %9s %9s\n", "100 000 lines, ms", "with journal", "without", "",
              "median", "worst", "median", "worst");
  print("first stamp", {with.begin(), with.begin() + 1}, {without.begin(), without.begin() + 1});
  print("stamp", {with.begin() + 1, with.end()}, {without.begin() + 1, without.end()});
  print("shift of all lines", shiftWith, shiftWithout);
  std::printf("%-34s %9.4f\n", "start of the editor, ms more", median(start));
  std::printf("%-34s %9ld\n", "memory of both documents' stamps, KB", after - before);
}

} // namespace

int main() {
  char folder[] = "/var/tmp/journal_benchXXXXXX"; // on a disk
  if (mkdtemp(folder) == nullptr) return 1;
  setenv("XDG_STATE_HOME", (std::string(folder) + "/state").c_str(), 1);
  measure(folder);
  return std::system(("rm -rf " + std::string(folder)).c_str());
}
