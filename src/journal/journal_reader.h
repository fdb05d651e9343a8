#pragma once

#include "journal/journal_format.h"

#include <optional>
#include <string_view>

/** A record of a journal. The payload is part of the bytes that were read. */
struct TJournalRecord {
  TRecordType type = TRecordType::kUndo;
  int64 whenS = 0;
  std::string_view payload;
};

/** Reads the longest valid prefix of a journal from untrusted bytes, which must outlive it. Not thread-safe. */
class TJournalReader {
public:
  explicit TJournalReader(std::string_view bytes);

  /** Nothing for bytes that are no journal; then there are no records either. A damaged header is replaced by one
      without a target, if that leads to a valid record. */
  const std::optional<TJournalHeader>& Header() const { return fHeader; }
  bool IsHeaderDamaged() const { return fIsHeaderDamaged; }
  size_t HeaderSize() const { return fHeaderSize; }
  /** The next record; nothing after the last valid one. */
  std::optional<TJournalRecord> Next();
  /** Size of the header and of the records that were read. */
  size_t Position() const { return fPosition; }
  uint64 CountRead() const { return fNumber; }
  /** After the last valid record: true if a record follows that is complete but damaged, not just cut off. */
  bool IsDamaged() const { return fIsDamaged; }

private:
  void GuessHeader();

  const std::string_view fBytes;
  size_t fHeaderSize = 0;
  std::optional<TJournalHeader> fHeader; // reading it sets fHeaderSize
  bool fIsHeaderDamaged = false;
  size_t fPosition = 0;
  uint64 fNumber = 0;
  bool fIsDamaged = false;
};

/** The document that a journal describes. */
struct TRecoveredDocument {
  TJournalHeader header;
  TJournalTarget target;
  TEditHistory history;
  TJournalView view;
  TCommonSource source;
  int64 lastChangeS = 0;   // since 1970
  bool isComplete = false; // false: the history before the base is missing
  bool isDamaged = false;  // the header is damaged, so that the target is unknown, or records after the prefix are
  // For appending to the journal.
  size_t bodyStart = 0;
  size_t validSize = 0;
  uint64 nextNumber = 0;
};

/** Repeats every step of the longest valid prefix. A record that does not fit the document ends the prefix. Nothing
    without a base. With a damaged header it is a document without a file. */
std::optional<TRecoveredDocument> recover_document(std::string_view journal);
