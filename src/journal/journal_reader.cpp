#include "journal/journal_reader.h"

#include "journal/bytes.h"
#include "lyrics/document.h"
#include "lyrics/lyrics_file.h"

#include <utility>

namespace {

bool is_known(uint8 type) {
  return type >= static_cast<uint8>(TRecordType::kFileBytes) && type <= static_cast<uint8>(TRecordType::kSource);
}

/** Applies the records of a journal, one after the other. */
class TRepeater {
public:
  explicit TRepeater(TRecoveredDocument* document) : fDocument(document) {}

  /** False, with nothing changed, for a record that does not fit. */
  bool Apply(const TJournalRecord& record) {
    if (!fHasBase) return fHasBase = ApplyBase(record);
    if (fIsPast) return ApplyPast(record);
    if (!ApplyStep(record)) return false;
    if (IsChange(record.type)) fDocument->lastChangeS = record.whenS;
    return true;
  }
  bool HasBase() const { return fHasBase; }

private:
  static bool IsChange(TRecordType type) { return type >= TRecordType::kStep && type <= TRecordType::kRedo; }

  bool ApplyBase(const TJournalRecord& record) {
    std::optional<std::list<std::string>> lines;
    if (record.type == TRecordType::kLines) {
      lines = decoded_lines_payload(record.payload);
      fIsPast = true;
    } else if (record.type == TRecordType::kFileBytes) {
      TByteReader bytes(record.payload);
      const auto form = bytes.Get<int32>();
      if (bytes.IsValid()) lines = ReadFile(bytes.GetBytes(bytes.Left()), form);
      fDocument->isComplete = true;
    }
    if (!lines) return false;
    fDocument->history.Reset(*lines);
    if (fIsPast) fDocument->history.MarkUnsaved(); // until kHistory tells
    fDocument->lastChangeS = record.whenS;
    return true;
  }

  std::list<std::string> ReadFile(std::string_view bytes, int32 form) {
    std::list<std::string> lines = lines_of_bytes(bytes, stored_encoding(form));
    fDocument->source = prepare_file(&lines, {stored_encoding(form), TLineEnd::kLf, stored_dialect(form)},
                                     lacks_last_line_end(bytes, stored_encoding(form)));
    return lines;
  }

  bool ApplyPast(const TJournalRecord& record) {
    if (record.type == TRecordType::kPastStep) {
      std::optional<TEditStep> step = decoded_step(record.payload);
      if (step) fPast.push_back(std::move(*step));
      return step.has_value();
    }
    const auto history = record.type == TRecordType::kHistory ? decoded_history(record.payload) : std::nullopt;
    const auto& lines = fDocument->history.Lines();
    if (!history ||
        !fDocument->history.Restore({lines.begin(), lines.end()}, std::move(fPast), history->done, history->saved)) {
      return false;
    }
    fIsPast = false;
    fDocument->isComplete = true;
    return true;
  }

  bool ApplyStep(const TJournalRecord& record) {
    switch (record.type) {
    case TRecordType::kStep:
      return ApplyNewStep(record.payload);
    case TRecordType::kTyping:
      return fDocument->history.RestoreTyping(std::string(record.payload));
    case TRecordType::kUndo:
      return Replay(TReplayDirection::kUndo);
    case TRecordType::kRedo:
      return Replay(TReplayDirection::kRedo);
    case TRecordType::kSaved:
      fDocument->history.MarkSaved();
      return true;
    case TRecordType::kUnsaved:
      fDocument->history.MarkUnsaved();
      return true;
    case TRecordType::kView:
      return Assign(decoded_view(record.payload), &fDocument->view);
    case TRecordType::kTarget:
      return Assign(decoded_target(record.payload), &fDocument->target);
    case TRecordType::kSource:
      return Assign(decoded_source(record.payload), &fDocument->source);
    default:
      return false;
    }
  }

  bool ApplyNewStep(std::string_view payload) {
    std::optional<TEditStep> step = decoded_step(payload);
    if (!step) return false;
    const int32 line = step->lineAfter;
    if (!fDocument->history.RestoreStep(std::move(*step))) return false;
    fDocument->view.line = line;
    return true;
  }

  bool Replay(TReplayDirection direction) {
    const std::optional<TReplay> replay = fDocument->history.ReplayNext(direction);
    if (replay) fDocument->view.line = replay->line;
    return replay.has_value();
  }

  template <typename Value>
  static bool Assign(const std::optional<Value>& decoded, Value* value) {
    if (decoded) *value = *decoded;
    return decoded.has_value();
  }

  TRecoveredDocument* const fDocument;
  bool fHasBase = false;
  bool fIsPast = false; // past steps are being collected
  std::vector<TEditStep> fPast;
};

} // namespace

TJournalReader::TJournalReader(std::string_view bytes)
    : fBytes(bytes), fHeader(decoded_header(bytes, &fHeaderSize)), fPosition(fHeaderSize) {
  if (!fHeader) GuessHeader();
}

void TJournalReader::GuessHeader() {
  size_t size = 0;
  fHeader = guessed_header(fBytes, &size);
  fPosition = size;
  if (!Next()) fHeader.reset();
  fIsHeaderDamaged = fHeader.has_value();
  fIsDamaged = false;
  fNumber = 0;
  fHeaderSize = fPosition = fHeader ? size : 0;
}

std::optional<TJournalRecord> TJournalReader::Next() {
  if (!fHeader || fIsDamaged) return {};
  TByteReader bytes(fBytes.substr(fPosition));
  const std::string_view head = fBytes.substr(fPosition, kRecordHead);
  const auto type = bytes.Get<uint8>();
  const auto size = bytes.Get<uint32>();
  const auto whenS = bytes.Get<int64>();
  const std::string_view payload = bytes.GetBytes(size);
  const std::string_view tail = bytes.GetBytes(kRecordTail);
  if (!bytes.IsValid()) return {};
  TRecordDigest digest(fHeader->seed, fNumber, head, payload.size());
  digest.Add(payload);
  fIsDamaged = digest.Tail() != tail || !is_known(type);
  if (fIsDamaged) return {};
  fPosition += head.size() + payload.size() + tail.size();
  ++fNumber;
  return TJournalRecord{static_cast<TRecordType>(type), whenS, payload};
}

std::optional<TRecoveredDocument> recover_document(std::string_view journal) {
  TJournalReader reader(journal);
  if (!reader.Header()) return {};
  TRecoveredDocument document;
  document.header = *reader.Header();
  document.target = document.header.target;
  document.view.mode = document.header.mode;
  document.bodyStart = document.validSize = reader.HeaderSize();
  TRepeater repeater(&document);
  while (const std::optional<TJournalRecord> record = reader.Next()) {
    if (!repeater.Apply(*record)) {
      document.isDamaged = true;
      break;
    }
    document.validSize = reader.Position();
    document.nextNumber = reader.CountRead();
  }
  document.isDamaged |= reader.IsDamaged() || reader.IsHeaderDamaged();
  if (reader.IsHeaderDamaged()) document.target = {{}, document.target.form, {}, {}};
  if (!repeater.HasBase()) return {};
  return document;
}
