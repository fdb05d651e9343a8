#include "journal/journal_writer.h"

#include "journal/bytes.h"
#include "journal/journal_process.h"
#include "lyrics/lyrics_file.h"
#include "platform/storage/file.h"
#include "platform/support/log.h"

#include <algorithm>
#include <ctime>
#include <random>
#include <utility>

namespace {

/** From a record to its flush; with the time that a flush takes, less than a second. */
constexpr bigtime_t kFlushDelayUs = 400000;
constexpr size_t kChunk = 64 << 10;
/** A journal that has grown by this much, and to twice what it began with, is replaced by a snapshot. */
constexpr size_t kMostGrowth = 64 << 20;

uint64 random_number() {
  std::random_device random;
  return (uint64{random()} << 32) | random();
}

} // namespace

TJournalWriter::TJournalWriter(TJournalDisk* disk, TReporter report) : fDisk(disk), fReport(std::move(report)) {}

void TJournalWriter::Execute(TJournalCommand command, bigtime_t nowUs) {
  fNowUs = nowUs;
  std::visit([this](auto& known) { Do(known); }, command);
}

std::optional<bigtime_t> TJournalWriter::FlushDueUs() const {
  if (!fUnflushedUs) return {};
  return *fUnflushedUs + kFlushDelayUs;
}

std::shared_ptr<TJournalFile> TJournalWriter::TakeDueFlush(bigtime_t nowUs) {
  const std::optional<bigtime_t> due = FlushDueUs();
  if (!due || nowUs < *due) return {};
  fUnflushedUs.reset();
  return fBody.file;
}

void TJournalWriter::Do(TJournalStart& command) {
  std::optional<TBody> begun = Begin(command);
  if (!begun) return;
  // The previous file is the only copy until the new one is on the disk.
  if (fIsNamed && !begun->file->Flush()) {
    begun->file->Remove();
    return Fail("flush");
  }
  RemoveName();
  fBody = std::move(*begun);
  fIsNamed = true;
  fIsBroken = false;
  fWantsSnapshot = false;
  fUnflushedUs = fNowUs;
  if (std::exchange(fHasFailed, false)) fReport(TJournalReport::kWorksAgain);
}

/** The new file with its base; nothing, and no file, on failure. */
std::optional<TJournalWriter::TBody> TJournalWriter::Begin(const TJournalStart& command) {
  const bool isSame = std::holds_alternative<TJournalStart::TSameDocument>(command.base);
  if (isSame && (fIsBroken || !fBody.file)) {
    RequestSnapshot();
    return {};
  }
  fWantsSnapshot = false;
  TBody body;
  body.file = fDisk->Create();
  if (!body.file) {
    Fail("create");
    return {};
  }
  body.seed = isSame ? fBody.seed : random_number();
  if (fDocument == 0) fDocument = random_number();
  const std::string header =
      encoded_header({fDocument, ++fGeneration, body.seed, this_process(), command.target, command.mode});
  body.start = body.size = header.size();
  const bool isWritten = body.file->Append(header) && WriteBase(command, &body);
  if (!isWritten) {
    body.file->Remove();
    if (!fWantsSnapshot) Fail("write");
    return {};
  }
  body.firstSize = body.size;
  return body;
}

bool TJournalWriter::WriteBase(const TJournalStart& command, TBody* body) {
  if (const auto* const file = std::get_if<TOpenedFile>(&command.base)) return CopyFile(*file, body);
  if (const auto* const records = std::get_if<std::vector<TJournalAppend>>(&command.base)) {
    return std::all_of(records->begin(), records->end(),
                       [body](const TJournalAppend& record) { return Write(record, body); });
  }
  // The records may name an earlier target.
  return CopyBody(body) && Write({TRecordType::kTarget, std::time(nullptr), encoded_target(command.target)}, body);
}

bool TJournalWriter::CopyBody(TBody* body) const {
  std::string chunk(kChunk, '\0');
  for (size_t from = fBody.start; from < fBody.size;) {
    const ssize_t count = fBody.file->Read(static_cast<off_t>(from), chunk.data(), std::min(kChunk, fBody.size - from));
    if (count <= 0 || !body->file->Append({chunk.data(), static_cast<size_t>(count)})) return false;
    from += static_cast<size_t>(count);
    body->size += static_cast<size_t>(count);
  }
  body->number = fBody.number;
  return true;
}

/** The file's bytes as a record. A file that is no longer the one that was opened cannot be the base. */
bool TJournalWriter::CopyFile(const TOpenedFile& source, TBody* body) {
  BFile file(source.path.c_str(), B_READ_ONLY);
  const auto size = static_cast<size_t>(source.state.size);
  TByteWriter encoding;
  encoding.Add(stored_number(source.encoding, source.dialect));
  const std::string before = encoding.Take();
  const std::string head = record_head(TRecordType::kFileBytes, before.size() + size, std::time(nullptr));
  TRecordDigest recordDigest(body->seed, body->number++, head, before.size() + size);
  recordDigest.Add(before);
  TDigest fileDigest(size);
  std::string chunk(kChunk, '\0');
  bool isCopied = file.InitCheck() == B_OK && file.IsRegular();
  if (isCopied && !body->file->Append(head + before)) return false;
  for (size_t left = size; isCopied && left > 0;) {
    const ssize_t count = file.Read(chunk.data(), std::min(kChunk, left));
    isCopied = count > 0;
    if (!isCopied) break;
    const std::string_view piece(chunk.data(), static_cast<size_t>(count));
    if (!body->file->Append(piece)) return false;
    recordDigest.Add(piece);
    fileDigest.Add(piece);
    left -= piece.size();
  }
  if (!isCopied || fileDigest.Value() != source.state.digest || file.Read(chunk.data(), 1) != 0) {
    RequestSnapshot();
    return false;
  }
  body->size += head.size() + before.size() + size + kRecordTail;
  return body->file->Append(recordDigest.Tail());
}

bool TJournalWriter::Write(const TJournalAppend& record, TBody* body) {
  if (record.payload.size() > kMaxRecordSize) return false;
  const std::string head = record_head(record.type, record.payload.size(), record.whenS);
  TRecordDigest digest(body->seed, body->number++, head, record.payload.size());
  digest.Add(record.payload);
  body->size += head.size() + record.payload.size() + kRecordTail;
  if (record.payload.size() <= kChunk) return body->file->Append(head + record.payload + digest.Tail());
  return body->file->Append(head) && body->file->Append(record.payload) && body->file->Append(digest.Tail());
}

void TJournalWriter::Do(TJournalAppend& command) {
  if (fIsBroken || !fBody.file) return;
  if (!Write(command, &fBody)) return Fail("write");
  if (!fUnflushedUs && fIsNamed) fUnflushedUs = fNowUs;
  if (fBody.size > 2 * fBody.firstSize + kMostGrowth && !fWantsSnapshot) RequestSnapshot();
}

void TJournalWriter::Do(TJournalRest&) {
  RemoveName();
}

void TJournalWriter::Do(TJournalClose&) {
  RemoveName();
  fBody = {};
  fDocument = 0;
  fIsBroken = false;
  fWantsSnapshot = false;
}

void TJournalWriter::Do(TJournalAdopt& command) {
  fBody = {std::move(command.file), command.header.seed, command.bodyStart,
           command.validSize,       command.validSize,   command.nextNumber};
  fIsNamed = true;
  fDocument = command.header.document;
  fGeneration = command.header.generation;
}

void TJournalWriter::RemoveName() {
  if (std::exchange(fIsNamed, false)) fBody.file->Remove();
  fUnflushedUs.reset();
}

void TJournalWriter::RequestSnapshot() {
  fWantsSnapshot = true;
  fReport(TJournalReport::kNeedsSnapshot);
}

/** What is on the disk stays there: a valid prefix is better than nothing. */
void TJournalWriter::Fail(const char* what) {
  fIsBroken = true;
  if (!std::exchange(fHasFailed, true)) log_error("journal", std::string("failed to ") + what);
  fReport(TJournalReport::kFailed);
}
