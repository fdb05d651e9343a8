#pragma once

#include "lyrics/edit_history.h"
#include "lyrics/file_state.h"
#include "lyrics/lyrics_file.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/** The bytes of a journal: a header, then one record for each step of a document's history. A record is stored after
    the previous one and never changed, so that whatever interrupts the writing, a prefix is valid. Numbers are
    little-endian; docs/file-formats.md describes every field. Pure: any thread. */

/** The file that a document is saved in; an empty path for none. */
struct TJournalTarget {
  std::string path;
  TLyricsForm form;
  TReadLosses unread;
  std::optional<TFileState> state; // when it was last read or written
};

/** A process, distinguishable from a later one with the same id. */
struct TJournalProcess {
  int32 id = 0;
  uint64 startTicks = 0; // since the machine was started
  std::string bootId;
};

struct TJournalHeader {
  uint64 document = 0;   // the same in all journals of one open document
  uint64 generation = 0; // of them the highest is valid
  uint64 seed = 0;       // of the digests of the records: no record of another journal is mistaken for one of this
  TJournalProcess process;
  TJournalTarget target;
  int32 mode = 0; // of the editor
};

/** The first record is the base: kFileBytes or kLines. Numbers are stored; never change one. */
enum class TRecordType : uint8 {
  kFileBytes = 1, // encoding, bytes of the file as it was opened
  kLines = 2,     // the lines, each with a line feed
  kPastStep = 3,  // after kLines: a step of the history that led to these lines, oldest first; redoable ones last
  kHistory = 4,   // after kLines and kPastStep: how many of the steps are done, and after which the document was saved
  kStep = 5,      // a new step
  kTyping = 6,    // more typing in the line of the last step: the whole line
  kUndo = 7,
  kRedo = 8,
  kSaved = 9,
  kUnsaved = 10,
  kView = 11,   // mode, current line
  kTarget = 12, // another target
  kSource = 13, // what the lines do not hold of a file in the common dialect
};

inline constexpr uint32 kJournalVersion = 1;
/** A larger journal is replaced by a compact one, and is not read. */
inline constexpr size_t kMaxJournalSize = size_t{1} << 30;
inline constexpr size_t kMaxRecordSize = size_t{1} << 30;
/** Bytes of a record before and after its payload. */
inline constexpr size_t kRecordHead = 1 + 4 + 8;
inline constexpr size_t kRecordTail = 8;

std::string encoded_header(const TJournalHeader& header);
/** Nothing for bytes that are damaged, incomplete or of another version; else their size as well. */
std::optional<TJournalHeader> decoded_header(std::string_view bytes, size_t* size);
/** What the first record has to confirm of a header that is damaged: the seed, in a header without a target, and its
    size. Nothing for one of another version. */
std::optional<TJournalHeader> guessed_header(std::string_view bytes, size_t* size);
/** True for the beginning of a header, which was not written to its end. */
bool is_cut_header(std::string_view bytes);

/** Type, payload size, and time (s since 1970). */
std::string record_head(TRecordType type, size_t payloadSize, int64 whenS);
/** What follows the payload: the digest of seed, `number` (of the record, from 0), head and payload. */
class TRecordDigest {
public:
  TRecordDigest(uint64 seed, uint64 number, std::string_view head, size_t payloadSize);
  void Add(std::string_view payload) { fDigest.Add(payload); }
  std::string Tail() const;

private:
  TDigest fDigest;
};

// Payloads. The decoding functions return nothing for malformed ones.
std::string encoded_lines_payload(const std::vector<std::string>& lines);
std::optional<std::list<std::string>> decoded_lines_payload(std::string_view payload);
std::string encoded_step(const TEditStep& step);
std::optional<TEditStep> decoded_step(std::string_view payload);

struct TJournalHistory {
  uint64 done = 0;
  std::optional<uint64> saved;
};
std::string encoded_history(const TJournalHistory& history);
std::optional<TJournalHistory> decoded_history(std::string_view payload);

struct TJournalView {
  int32 mode = 0;
  int32 line = 0;
};
std::string encoded_view(const TJournalView& view);
std::optional<TJournalView> decoded_view(std::string_view payload);

std::string encoded_source(const TCommonSource& source);
std::optional<TCommonSource> decoded_source(std::string_view payload);

std::string encoded_target(const TJournalTarget& target);
std::optional<TJournalTarget> decoded_target(std::string_view payload);
