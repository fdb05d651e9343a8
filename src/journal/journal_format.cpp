#include "journal/journal_format.h"

#include "journal/bytes.h"

namespace {

constexpr std::string_view kMagic = "VESMOJNL";
constexpr size_t kMaxHeaderSize = 64 << 10;
constexpr size_t kMaxPath = 16 << 10;
constexpr size_t kMaxBootId = 64;

std::string number_text(uint64 number) {
  TByteWriter bytes;
  bytes.Add(number);
  return bytes.Take();
}

void add_target(TByteWriter* bytes, const TJournalTarget& target) {
  bytes->AddText(target.path);
  bytes->Add(stored_number(target.form.encoding, target.form.dialect));
  bytes->Add(static_cast<int32>(target.form.lineEnd));
  bytes->Add(target.unread.tailBytes);
  bytes->AddBool(target.unread.isCut);
  bytes->AddBool(target.unread.hasBrokenBytes);
  bytes->AddBool(target.unread.hasOddBytes);
  bytes->AddBool(target.state.has_value());
  const TFileState state = target.state.value_or(TFileState{});
  bytes->Add(state.device);
  bytes->Add(state.inode);
  bytes->Add(state.size);
  bytes->Add(state.modifiedNs);
  bytes->Add(state.digest);
}

bool is_path(std::string_view text) {
  return text.empty() || (text.front() == '/' && text.size() <= kMaxPath && text.find('\0') == std::string_view::npos);
}

std::optional<TJournalTarget> get_target(TByteReader* bytes) {
  TJournalTarget target;
  target.path = bytes->GetText();
  const auto number = bytes->Get<int32>();
  target.form.encoding = stored_encoding(number);
  target.form.dialect = stored_dialect(number);
  target.form.lineEnd = line_end_of(bytes->Get<int32>());
  target.unread.tailBytes = bytes->Get<int64>();
  target.unread.isCut = bytes->GetBool();
  target.unread.hasBrokenBytes = bytes->GetBool();
  target.unread.hasOddBytes = bytes->GetBool();
  const bool hasState = bytes->GetBool();
  TFileState state;
  state.device = bytes->Get<uint64>();
  state.inode = bytes->Get<uint64>();
  state.size = bytes->Get<int64>();
  state.modifiedNs = bytes->Get<int64>();
  state.digest = bytes->Get<uint64>();
  if (hasState) target.state = state;
  if (!bytes->IsValid() || !is_path(target.path)) return {};
  return target;
}

std::optional<TEditKind> kind_of(uint8 number) {
  if (number > static_cast<uint8>(TEditKind::kUnifyAsCommon)) return {};
  return static_cast<TEditKind>(number);
}

} // namespace

std::string encoded_header(const TJournalHeader& header) {
  TByteWriter body;
  body.Add(header.document);
  body.Add(header.generation);
  body.Add(header.seed);
  body.Add(header.process.id);
  body.Add(header.process.startTicks);
  body.AddText(header.process.bootId);
  add_target(&body, header.target);
  body.Add(header.mode);
  const std::string text = body.Take();
  TByteWriter head;
  head.Add(kJournalVersion);
  head.Add(static_cast<uint32>(text.size()));
  const std::string bytes = std::string(kMagic) + head.Take() + text;
  return bytes + number_text(digest_of(bytes));
}

std::optional<TJournalHeader> decoded_header(std::string_view bytes, size_t* size) {
  TByteReader reader(bytes);
  if (reader.GetBytes(kMagic.size()) != kMagic || reader.Get<uint32>() != kJournalVersion) return {};
  const auto length = reader.Get<uint32>();
  if (length > kMaxHeaderSize) return {};
  TByteReader body(reader.GetBytes(length));
  const size_t digested = bytes.size() - reader.Left();
  if (const auto digest = reader.Get<uint64>(); !reader.IsValid() || digest != digest_of(bytes.substr(0, digested)))
    return {};
  *size = bytes.size() - reader.Left();
  TJournalHeader header;
  header.document = body.Get<uint64>();
  header.generation = body.Get<uint64>();
  header.seed = body.Get<uint64>();
  header.process.id = body.Get<int32>();
  header.process.startTicks = body.Get<uint64>();
  header.process.bootId = body.GetText();
  const std::optional<TJournalTarget> target = get_target(&body);
  header.mode = body.Get<int32>();
  if (!target || !body.IsAtEnd() || header.process.bootId.size() > kMaxBootId) return {};
  header.target = *target;
  return header;
}

std::optional<TJournalHeader> guessed_header(std::string_view bytes, size_t* size) {
  TByteReader reader(bytes);
  reader.GetBytes(kMagic.size());
  const auto version = reader.Get<uint32>();
  const auto length = reader.Get<uint32>();
  *size = bytes.size() - reader.Left() + length + sizeof(uint64);
  TJournalHeader header;
  reader.GetBytes(sizeof header.document + sizeof header.generation);
  header.seed = reader.Get<uint64>();
  if (!reader.IsValid() || version != kJournalVersion || length > kMaxHeaderSize || *size > bytes.size()) return {};
  return header;
}

bool is_cut_header(std::string_view bytes) {
  const std::string_view magic = bytes.substr(0, kMagic.size());
  if (!kMagic.starts_with(magic)) return false;
  TByteReader reader(bytes);
  reader.GetBytes(kMagic.size());
  const auto version = reader.Get<uint32>();
  const auto length = reader.Get<uint32>();
  if (!reader.IsValid()) return true;
  return version == kJournalVersion && length <= kMaxHeaderSize && reader.Left() < length + sizeof(uint64);
}

std::string record_head(TRecordType type, size_t payloadSize, int64 whenS) {
  TByteWriter head;
  head.Add(static_cast<uint8>(type));
  head.Add(static_cast<uint32>(payloadSize));
  head.Add(whenS);
  return head.Take();
}

TRecordDigest::TRecordDigest(uint64 seed, uint64 number, std::string_view head, size_t payloadSize)
    : fDigest(2 * sizeof(uint64) + head.size() + payloadSize) {
  fDigest.AddNumber(seed);
  fDigest.AddNumber(number);
  fDigest.Add(head);
}

std::string TRecordDigest::Tail() const {
  return number_text(fDigest.Value());
}

std::string encoded_lines_payload(const std::vector<std::string>& lines) {
  size_t size = 0;
  for (const std::string& line : lines) size += line.size() + 1;
  std::string text;
  text.reserve(size);
  for (const std::string& line : lines) text.append(line).push_back('\n');
  return text;
}

std::optional<std::list<std::string>> decoded_lines_payload(std::string_view payload) {
  if (!payload.empty() && payload.back() != '\n') return {};
  std::list<std::string> lines;
  for (size_t end = payload.find('\n'); end != std::string_view::npos; end = payload.find('\n')) {
    lines.emplace_back(payload.substr(0, end));
    payload.remove_prefix(end + 1);
  }
  return lines;
}

std::string encoded_step(const TEditStep& step) {
  TByteWriter bytes;
  bytes.Reserve(step.before.size() + step.after.size() + 64);
  bytes.Add(static_cast<uint8>(step.kind));
  bytes.Add(step.first);
  bytes.Add(step.countBefore);
  bytes.Add(step.countAfter);
  bytes.AddBool(step.areHeads);
  bytes.Add(step.lineBefore);
  bytes.Add(step.lineAfter);
  bytes.AddText(step.before);
  bytes.AddText(step.after);
  return bytes.Take();
}

std::optional<TEditStep> decoded_step(std::string_view payload) {
  TByteReader bytes(payload);
  const std::optional<TEditKind> kind = kind_of(bytes.Get<uint8>());
  TEditStep step;
  step.first = bytes.Get<int32>();
  step.countBefore = bytes.Get<int32>();
  step.countAfter = bytes.Get<int32>();
  step.areHeads = bytes.GetBool();
  step.lineBefore = bytes.Get<int32>();
  step.lineAfter = bytes.Get<int32>();
  step.before = bytes.GetText();
  step.after = bytes.GetText();
  if (!kind || !bytes.IsAtEnd()) return {};
  step.kind = *kind;
  return step;
}

std::string encoded_history(const TJournalHistory& history) {
  TByteWriter bytes;
  bytes.Add(history.done);
  bytes.AddBool(history.saved.has_value());
  bytes.Add(history.saved.value_or(0));
  return bytes.Take();
}

std::optional<TJournalHistory> decoded_history(std::string_view payload) {
  TByteReader bytes(payload);
  TJournalHistory history;
  history.done = bytes.Get<uint64>();
  const bool hasSaved = bytes.GetBool();
  const auto saved = bytes.Get<uint64>();
  if (hasSaved) history.saved = saved;
  if (!bytes.IsAtEnd()) return {};
  return history;
}

std::string encoded_view(const TJournalView& view) {
  TByteWriter bytes;
  bytes.Add(view.mode);
  bytes.Add(view.line);
  return bytes.Take();
}

std::optional<TJournalView> decoded_view(std::string_view payload) {
  TByteReader bytes(payload);
  TJournalView view;
  view.mode = bytes.Get<int32>();
  view.line = bytes.Get<int32>();
  if (!bytes.IsAtEnd()) return {};
  return view;
}

std::string encoded_source(const TCommonSource& source) {
  TByteWriter bytes;
  bytes.AddBool(source.hasByteOrderMark);
  bytes.AddBool(source.lacksLastLineEnd);
  bytes.Add(source.lineCount);
  for (size_t i = 0; i < source.CountLines(); ++i) {
    bytes.Add(source.IndexOf(i));
    bytes.AddText(source.TextOf(i));
  }
  return bytes.Take();
}

std::optional<TCommonSource> decoded_source(std::string_view payload) {
  TByteReader bytes(payload);
  TCommonSource source;
  source.hasByteOrderMark = bytes.GetBool();
  source.lacksLastLineEnd = bytes.GetBool();
  source.lineCount = bytes.Get<int32>();
  while (bytes.IsValid() && !bytes.IsAtEnd()) {
    const auto index = bytes.Get<int32>();
    const std::string_view text = bytes.GetText();
    if (text.find('\n') != std::string_view::npos) return {};
    source.AddLine(index, text);
  }
  if (!bytes.IsAtEnd()) return {};
  return source;
}

std::string encoded_target(const TJournalTarget& target) {
  TByteWriter bytes;
  add_target(&bytes, target);
  return bytes.Take();
}

std::optional<TJournalTarget> decoded_target(std::string_view payload) {
  TByteReader bytes(payload);
  std::optional<TJournalTarget> target = get_target(&bytes);
  if (!bytes.IsAtEnd()) return {};
  return target;
}
