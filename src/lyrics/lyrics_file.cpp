#include "lyrics/lyrics_file.h"

#include "common/koreva.h"
#include "lyrics/foreign_encoding.h"
#include "platform/storage/file.h"
#include "platform/support/text_encoding.h"
#include "plugin/pref.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace {

/** A buffer that is not zeroed before it is read into. */
struct TBytes {
  explicit TBytes(size_t capacity) : data(new char[capacity + 1]) {}
  std::string_view View() const { return {data.get(), length}; }
  std::unique_ptr<char[]> data;
  size_t length = 0;
};

/** The whole file, ended by a NUL; null when it cannot be read. */
std::unique_ptr<TBytes> read_file(const entry_ref& ref, TReadReport* report) {
  BFile file(&ref, B_READ_ONLY);
  off_t size = 0;
  if (file.InitCheck() != B_OK || !file.IsRegular() || file.GetSize(&size) != B_OK || size > kMaxLyricsFileSize)
    return {};
  auto bytes = std::make_unique<TBytes>(static_cast<size_t>(size));
  while (bytes->length < static_cast<size_t>(size)) {
    const ssize_t count = file.Read(bytes->data.get() + bytes->length, static_cast<size_t>(size) - bytes->length);
    if (count < 0) return {};
    if (count == 0) break; // the file was truncated meanwhile
    bytes->length += static_cast<size_t>(count);
  }
  bytes->data[bytes->length] = '\0';
  if (report) report->state = file_state(file.Descriptor(), bytes->View());
  return bytes;
}

/** Cuts the text off at its first NUL. */
void end_at_nul(TBytes* bytes, TReadReport* report) {
  const std::string_view all = bytes->View();
  bytes->length = std::strlen(bytes->data.get());
  const bool hasTail = all.find_first_not_of('\0', bytes->length) != std::string_view::npos;
  if (report) report->losses = {.tailBytes = hasTail ? static_cast<int64>(all.size() - bytes->length - 1) : 0};
}

/** True when the line ends as they will be treated join or split lines. */
bool has_stray_cr(std::string_view text, long crType) {
  for (size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r', at + 1)) {
    const bool isBeforeLf = at + 1 < text.size() && text[at + 1] == '\n';
    if (isBeforeLf == (crType == 2)) return true;
  }
  return false;
}

/** Removes every CR, run by run; returns the new end. */
char* drop_cr(char* start, char* end) {
  char* kept = start;
  for (char* at = start; at != end;) {
    auto* const cr = static_cast<char*>(std::memchr(at, '\r', static_cast<size_t>(end - at)));
    const auto run = static_cast<size_t>((cr ? cr : end) - at);
    if (kept != at) std::memmove(kept, at, run);
    kept += run;
    at = cr ? cr + 1 : end;
  }
  return kept;
}

/** Converts CR to LF, or drops it, in place. The text never gets longer. */
void unify_line_ends(TBytes* text, long crType) {
  char* const start = text->data.get();
  char* const end = start + text->length;
  if (crType == 2) {
    std::replace(start, end, '\r', '\n');
  } else {
    text->length = static_cast<size_t>(drop_cr(start, end) - start);
    start[text->length] = '\0';
  }
}

long count_substitutes(const TBytes& text) {
  constexpr char kSubstitute = 0x1A;
  return std::count(text.data.get(), text.data.get() + text.length, kSubstitute);
}

/** True when writing the converted text gives the same bytes. */
bool has_same_bytes(const TBytes& converted, const TBytes& source, uint32 converter) {
  std::string back(worst_case_from_utf8(converted.length), '\0');
  size_t sourceLength = converted.length;
  size_t length = back.size();
  return convert_from_utf8(converter, converted.data.get(), &sourceLength, back.data(), &length) == B_OK &&
         std::string_view(back.data(), length) == source.View();
}

/** True when the text up to a NUL has a last line without a line end. */
bool has_open_end(std::string_view bytes) {
  const std::string_view text = bytes.substr(0, bytes.find('\0'));
  return !text.empty() && text.back() != '\n' && text.back() != '\r';
}

TBytes bytes_of(std::string_view text) {
  TBytes bytes(text.size());
  text.copy(bytes.data.get(), text.size());
  bytes.data[text.size()] = '\0';
  bytes.length = text.size();
  return bytes;
}

/** Converts the whole file first: its line ends and NULs may have two bytes. False if that cannot be done. */
bool load_foreign(const TBytes& file, TEncoding encoding, std::list<std::string>* lines, long* crType,
                  TReadReport* report) {
  const std::optional<std::string> text = foreign_to_utf8(file.View(), encoding);
  if (!text) return false;
  TBytes bytes = bytes_of(*text);
  end_at_nul(&bytes, report);
  *crType = koreva::detect_cr_type(bytes.data.get());
  if (report) {
    const bool isSame = foreign_from_utf8(*text, encoding) == file.View();
    report->losses.hasBrokenBytes = !isSame && count_substitutes(bytes) > 0;
    report->losses.hasOddBytes = !isSame || has_stray_cr(bytes.View(), *crType);
    report->lacksLastLineEnd = has_open_end(bytes.View());
  }
  unify_line_ends(&bytes, *crType);
  text_to_lines(bytes.data.get(), lines);
  return true;
}

/** The text in UTF-8: converted or, where that fails, unchanged. Converted text is limited to twice the length.
    `losses` is optional. */
std::unique_ptr<TBytes> to_utf8(std::unique_ptr<TBytes> text, long encoding, TReadLosses* losses) {
  if (encoding == 0) return text;
  auto converted = std::make_unique<TBytes>(text->length * 2);
  size_t sourceLength = text->length;
  size_t length = text->length * 2;
  const auto converter = static_cast<uint32>(cvt_enum_ec_to_bconv(encoding));
  if (convert_to_utf8(converter, text->data.get(), &sourceLength, converted->data.get(), &length) != B_OK) return text;
  converted->data[length] = '\0';
  converted->length = length;
  if (losses) {
    losses->isCut = sourceLength < text->length;
    losses->hasBrokenBytes = count_substitutes(*converted) != count_substitutes(*text);
    if (!losses->isCut && !losses->hasBrokenBytes && !has_same_bytes(*converted, *text, converter))
      losses->hasOddBytes = true;
  }
  return converted;
}

void split_lines(std::string_view text, std::list<std::string>* lines) {
  while (!text.empty()) {
    const size_t end = text.find('\n');
    lines->emplace_back(text.substr(0, end));
    if (end == std::string_view::npos) break;
    text.remove_prefix(end + 1);
  }
}

std::string_view line_end_text(long crType) {
  switch (crType) {
  case 0:
    return "\n";
  case 1:
    return "\r\n";
  case 2:
    return "\r";
  default:
    return "";
  }
}

/** One UTF-8 text: every line and its line end. */
template <typename Lines>
std::string joined(const Lines& lines, std::string_view lineEnd) {
  size_t length = 0;
  for (const std::string& line : lines) length += line.size() + lineEnd.size();
  std::string text;
  text.reserve(length + 1); // plus the NUL at the end of UTF-8
  for (const std::string& line : lines) text.append(line).append(lineEnd);
  return text;
}

/** Nothing when the text stays UTF-8. */
std::optional<std::string> converted(const std::string& text, long encoding) {
  if (encoding == 0) return {};
  if (is_foreign(any_encoding_of(encoding))) return foreign_from_utf8(text, any_encoding_of(encoding));
  std::string bytes(worst_case_from_utf8(text.size()), '\0');
  size_t sourceLength = text.size();
  size_t length = bytes.size();
  const auto converter = static_cast<uint32>(cvt_enum_ec_to_bconv(encoding));
  if (convert_from_utf8(converter, text.data(), &sourceLength, bytes.data(), &length) != B_OK) return {};
  bytes.resize(length);
  return bytes;
}

/** Shift-JIS and JIS cannot encode one. */
bool can_have_byte_order_mark(TEncoding encoding) {
  return encoding == TEncoding::kUtf8 || is_foreign(encoding);
}

/** What a save writes for the text: converted, else UTF-8 with a NUL at the end. */
std::string encoded(std::string text, long encoding) {
  if (std::optional<std::string> bytes = converted(text, encoding)) return std::move(*bytes);
  text.push_back('\0');
  return text;
}

std::string encoded_foreign(const std::vector<std::string>& lines, const TLyricsForm& form,
                            const TCommonSource& source) {
  std::string text = joined(lines, line_end_text(static_cast<long>(form.lineEnd)));
  if (source.hasByteOrderMark) text.insert(0, kByteOrderMark);
  return converted(text, static_cast<long>(form.encoding)).value_or(text);
}

std::string encoded_common(const std::vector<std::string>& lines, const TLyricsForm& form,
                           const TCommonSource& source) {
  const std::string_view lineEnd = line_end_text(static_cast<long>(form.lineEnd));
  std::string text = joined(written_as_common(lines, source), lineEnd);
  // An empty last line would be lost without its line end.
  if (source.lacksLastLineEnd && !lines.empty() && !lines.back().empty()) text.erase(text.size() - lineEnd.size());
  if (source.hasByteOrderMark && can_have_byte_order_mark(form.encoding)) text.insert(0, kByteOrderMark);
  return converted(text, static_cast<long>(form.encoding)).value_or(text);
}

} // namespace

bool load_lyrics(const entry_ref& file, std::list<std::string>* lines, long* crType, long* encoding,
                 TReadReport* report) {
  const long wanted = gPref ? gPref->Values()->readEncoding : kDetectEncoding;
  return load_lyrics_as(wanted, file, lines, crType, encoding, report);
}

bool lacks_last_line_end(std::string_view bytes, TEncoding encoding) {
  if (is_foreign(encoding)) return has_open_end(foreign_to_utf8(bytes, encoding).value_or(""));
  return has_open_end(bytes);
}

std::list<std::string> lines_of_bytes(std::string_view bytes, TEncoding encoding) {
  std::list<std::string> lines;
  if (is_foreign(encoding)) {
    long crType = 0;
    load_foreign(bytes_of(bytes), encoding, &lines, &crType, nullptr);
    return lines;
  }
  auto text = std::make_unique<TBytes>(bytes_of(bytes));
  end_at_nul(text.get(), nullptr);
  unify_line_ends(text.get(), koreva::detect_cr_type(text->data.get()));
  text = to_utf8(std::move(text), static_cast<long>(encoding), nullptr);
  split_lines(text->data.get(), &lines);
  return lines;
}

bool load_lyrics_as(long readEncoding, const entry_ref& file, std::list<std::string>* lines, long* crType,
                    long* encoding, TReadReport* report) {
  std::unique_ptr<TBytes> text = read_file(file, report);
  if (!text) return false;
  if (const TEncoding foreign = any_encoding_of(readEncoding); is_foreign(foreign)) {
    if (!load_foreign(*text, foreign, lines, crType, report)) return false;
    *encoding = readEncoding;
    return true;
  }
  end_at_nul(text.get(), report);
  *crType = koreva::detect_cr_type(text->data.get());
  *encoding = readEncoding == kDetectEncoding ? koreva::detect_charset(text->data.get()) : readEncoding;
  if (report) report->losses.hasOddBytes = has_stray_cr(text->View(), *crType);
  if (report) report->lacksLastLineEnd = has_open_end(text->View());
  unify_line_ends(text.get(), *crType);
  text = to_utf8(std::move(text), *encoding, report ? &report->losses : nullptr);
  text_to_lines(text->data.get(), lines);
  return true;
}

void text_to_lines(const char* text, std::list<std::string>* lines) {
  lines->clear();
  split_lines(text, lines);
}

std::string lines_to_bytes(const std::list<std::string>& lines, long crType, long encoding) {
  return encoded(joined(lines, line_end_text(crType)), encoding);
}

std::string encoded_lines(const std::vector<std::string>& lines, const TLyricsForm& form, const TCommonSource& source) {
  if (form.dialect == TDialect::kCommon) return encoded_common(lines, form, source);
  if (is_foreign(form.encoding)) return encoded_foreign(lines, form, source);
  return encoded(joined(lines, line_end_text(static_cast<long>(form.lineEnd))), static_cast<long>(form.encoding));
}

unsigned long cvt_enum_ec_to_bconv(long encoding) {
  switch (encoding) {
  case 0:
    return B_UNICODE_CONVERSION;
  case 1:
    return B_SJIS_CONVERSION;
  case 2:
    return B_JIS_CONVERSION;
  default:
    return 0;
  }
}

long cvt_enum_bconv_to_ec(unsigned long converter) {
  return converter == B_JIS_CONVERSION ? 2 : converter == B_SJIS_CONVERSION ? 1 : 0;
}

long cvt_enum_cr_type_to_ct(long crType) {
  return crType == 1 || crType == 2 ? crType : 0;
}
