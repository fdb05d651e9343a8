#pragma once

#include "journal/journal_disk.h"
#include "journal/journal_format.h"
#include "lyrics/document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/** A record to be appended. */
struct TJournalAppend {
  TRecordType type = TRecordType::kUndo;
  int64 whenS = 0;
  std::string payload;
};

/** Begin a journal file. It has the same document as before, or begins with the opened file or with records. */
struct TJournalStart {
  struct TSameDocument {};
  TJournalTarget target;
  int32 mode = 0;
  std::variant<TSameDocument, TOpenedFile, std::vector<TJournalAppend>> base;
};

/** The document has no unsaved changes: its file is removed, but its records are kept until they are needed again. */
struct TJournalRest {};
/** The document is closed: its file is removed and its records are forgotten. */
struct TJournalClose {};
/** Continue the records of an earlier process; a TJournalStart follows. */
struct TJournalAdopt {
  std::shared_ptr<TJournalFile> file;
  TJournalHeader header;
  size_t bodyStart = 0;
  size_t validSize = 0;
  uint64 nextNumber = 0;
};

using TJournalCommand = std::variant<TJournalStart, TJournalAppend, TJournalRest, TJournalClose, TJournalAdopt>;

/** Takes commands for a TJournalWriter. */
class TJournalQueue {
public:
  TJournalQueue() = default;
  TJournalQueue(const TJournalQueue&) = delete;
  TJournalQueue& operator=(const TJournalQueue&) = delete;
  virtual ~TJournalQueue() = default;

  /** Never blocks. False, with nothing queued, if too much is waiting; a TJournalRest and a TJournalClose are always
      accepted. */
  [[nodiscard]] virtual bool Push(TJournalCommand command) = 0;
  /** False while so much is waiting that a large command would probably be refused. */
  virtual bool HasRoom() = 0;
};

enum class TJournalReport {
  kNeedsSnapshot, // the document cannot be continued from what the writer knows, or its journal has grown too large
  kFailed,        // the disk does not take the journal; reported for each start that fails
  kWorksAgain,
};

/** Executes commands on the disk, where every record is complete when the command returns, and due to be flushed soon
    after. After a failure records are ignored until a start with all lines. No thread and no clock of its own: owned by
    one thread, which passes the time. */
class TJournalWriter {
public:
  using TReporter = std::function<void(TJournalReport)>;
  /** `disk` is not owned. */
  TJournalWriter(TJournalDisk* disk, TReporter report);

  void Execute(TJournalCommand command, bigtime_t nowUs);
  /** When the next flush is due; nothing if all is flushed. */
  std::optional<bigtime_t> FlushDueUs() const;
  /** The file to flush now, on any thread; null when none is due. */
  std::shared_ptr<TJournalFile> TakeDueFlush(bigtime_t nowUs);
  void FlushFailed() { Fail("flush"); }

private:
  struct TBody {
    std::shared_ptr<TJournalFile> file;
    uint64 seed = 0;
    size_t start = 0;
    size_t size = 0;
    size_t firstSize = 0; // without the records that were appended later
    uint64 number = 0;    // of the next record
  };

  void Do(TJournalStart& command);
  void Do(TJournalAppend& command);
  void Do(TJournalRest& command);
  void Do(TJournalClose& command);
  void Do(TJournalAdopt& command);
  std::optional<TBody> Begin(const TJournalStart& command);
  bool WriteBase(const TJournalStart& command, TBody* body);
  bool CopyBody(TBody* body) const;
  bool CopyFile(const TOpenedFile& source, TBody* body);
  static bool Write(const TJournalAppend& record, TBody* body);
  void RemoveName();
  void RequestSnapshot();
  void Fail(const char* what);

  TJournalDisk* const fDisk;
  const TReporter fReport;
  TBody fBody;            // without a file: none
  bool fIsNamed = false;  // fBody.file is there for a next process
  bool fIsBroken = false; // fBody lacks records
  bool fHasFailed = false;
  bool fWantsSnapshot = false;
  uint64 fDocument = 0;
  uint64 fGeneration = 0;
  std::optional<bigtime_t> fUnflushedUs; // since when there is something to flush
  bigtime_t fNowUs = 0;
};
