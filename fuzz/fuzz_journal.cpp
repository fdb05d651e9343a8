#include "fuzz/fuzz.h"
#include "journal/bytes.h"
#include "journal/journal_reader.h"

namespace {

constexpr size_t kMaxRecords = 200;

/** The input as records with the right digests, so that their contents are reached: type, size, payload each. */
std::string journal_of(const std::string& input) {
  std::string journal = encoded_header({.seed = 1});
  TByteReader bytes(input);
  for (size_t number = 0; bytes.Left() > 0 && number < kMaxRecords; ++number) {
    const auto type = static_cast<TRecordType>(bytes.Get<uint8>() % 13);
    const size_t size = std::min<size_t>(bytes.Get<uint8>(), bytes.Left());
    const std::string_view payload = bytes.GetBytes(size);
    const std::string head = record_head(type, payload.size(), 0);
    TRecordDigest digest(1, number, head, payload.size());
    digest.Add(payload);
    journal += head;
    journal += payload;
    journal += digest.Tail();
  }
  return journal;
}

void check(const std::string& journal) {
  const auto document = recover_document(journal);
  if (!document) return;
  require(document->validSize <= journal.size());
  // The valid prefix alone gives the same document.
  const auto again = recover_document(journal.substr(0, document->validSize));
  require(again && again->history.Lines() == document->history.Lines() && again->nextNumber == document->nextNumber);
  // Every step can be undone and redone.
  TEditHistory history = document->history;
  while (history.ReplayNext(TReplayDirection::kUndo)) {
  }
  while (history.ReplayNext(TReplayDirection::kRedo)) {
  }
  require(history.CountDone() == history.Steps().size());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t size) {
  const std::string input = text_of(bytes, size);
  check(input);
  check(journal_of(input));
  return 0;
}
