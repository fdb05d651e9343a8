#pragma once

#include "journal/document_journal.h"
#include "journal/journal_reader.h"

#include <list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/** A journal in memory, which knows what a power cut would leave of it. */
struct MemoryJournal : TJournalFile {
  bool Append(std::string_view more) override {
    if (*room < more.size()) {
      bytes += more.substr(0, *room);
      *room = 0;
      return false;
    }
    *room -= more.size();
    bytes += more;
    return true;
  }
  bool Flush() override {
    flushed = bytes.size();
    return true;
  }
  ssize_t Read(off_t from, char* to, size_t size) const override {
    return static_cast<ssize_t>(bytes.copy(to, size, static_cast<size_t>(from)));
  }
  void Remove() override { isNamed = false; }

  std::string bytes;
  size_t flushed = 0;
  bool isNamed = true;
  size_t* room = nullptr;
};

struct MemoryDisk : TJournalDisk {
  std::shared_ptr<TJournalFile> Create() override {
    files.push_back(std::make_shared<MemoryJournal>());
    files.back()->room = &room;
    return files.back();
  }
  /** What the next process finds. */
  std::vector<std::shared_ptr<MemoryJournal>> Named() const {
    std::vector<std::shared_ptr<MemoryJournal>> named;
    for (const auto& file : files)
      if (file->isNamed) named.push_back(file);
    return named;
  }
  std::vector<std::shared_ptr<MemoryJournal>> files;
  size_t room = SIZE_MAX; // bytes until the disk is full
};

/** Executes each command at once. */
struct DirectQueue : TJournalQueue {
  DirectQueue(TJournalWriter* to, const bigtime_t* clock) : writer(to), nowUs(clock) {}
  bool Push(TJournalCommand command) override {
    writer->Execute(std::move(command), *nowUs);
    return true;
  }
  bool HasRoom() override { return true; }
  TJournalWriter* const writer;
  const bigtime_t* const nowUs;
};

/** A document with a journal on a disk of that type. */
template <typename Disk, typename Queue = DirectQueue>
struct JournaledDocumentOn {
  JournaledDocumentOn() { document.StartNew({}); }

  void Change(TLinesChange change, TEditKind kind = TEditKind::kOther) {
    document.Change(change, kind, 0, change.first, nowUs);
    HandleReports();
  }
  void Replay(TReplayDirection direction) {
    if (const auto next = document.Next(direction)) document.Replay(direction, *next);
    HandleReports();
  }
  void Save() { Save(document.File()); }
  void Save(const entry_ref& file) {
    document.Saved(document.PlanSave(file, document.Form(), {}), document.StateOnDisk());
    HandleReports();
  }
  /** A second later, when all is due to be flushed. */
  void Flush() {
    nowUs += 1000000;
    const auto file = writer.TakeDueFlush(nowUs);
    if (file && !file->Flush()) writer.FlushFailed();
    HandleReports();
  }
  /** As messages bring them to the document's thread. */
  void HandleReports() {
    for (const TJournalReport report : std::exchange(reports, {})) {
      journal.Handle(report);
      if (report == TJournalReport::kFailed) isUserTold = true;
    }
  }
  std::list<std::string> Lines() const { return document.CopyLines(); }

  bigtime_t nowUs = 1;
  std::vector<TJournalReport> reports;
  bool isUserTold = false; // that changes are not recorded
  TDocument document;
  Disk disk;
  TJournalWriter writer{&disk, [this](TJournalReport report) { reports.push_back(report); }};
  Queue* const queue = new Queue(&writer, &nowUs); // owned by the journal
  TDocumentJournal journal{&document, std::unique_ptr<TJournalQueue>(queue), [this] { return nowUs; }};
};
using JournaledDocument = JournaledDocumentOn<MemoryDisk>;

inline std::list<std::string> lines_of(const TRecoveredDocument& recovered) {
  return {recovered.history.Lines().begin(), recovered.history.Lines().end()};
}

/** Every state that undo and then redo lead through. */
inline std::vector<std::list<std::string>> all_states(TEditHistory history) {
  history.SetSink(nullptr);
  std::vector<std::list<std::string>> states;
  const auto add = [&] { states.emplace_back(history.Lines().begin(), history.Lines().end()); };
  add();
  while (history.ReplayNext(TReplayDirection::kUndo)) add();
  while (history.ReplayNext(TReplayDirection::kRedo)) add();
  return states;
}
