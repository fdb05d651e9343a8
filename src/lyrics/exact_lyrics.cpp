#include "lyrics/exact_lyrics.h"

#include "common/koreva.h"
#include "lyrics/foreign_encoding.h"
#include "lyrics/lyrics_file.h"
#include "platform/support/text_encoding.h"
#include "platform/support/utf8.h"

#include <algorithm>
#include <cstdio>
#include <unordered_set>

namespace {

constexpr char kSubstitute = 0x1A;

using Converter = status_t (*)(uint32, const char*, size_t*, char*, size_t*, char);

uint32 converter_number(TEncoding encoding) {
  return static_cast<uint32>(cvt_enum_ec_to_bconv(static_cast<long>(encoding)));
}

std::string converted(Converter converter, std::string_view text, TEncoding encoding) {
  std::string made(worst_case_from_utf8(text.size()), '\0');
  size_t sourceLength = text.size();
  size_t length = made.size();
  converter(converter_number(encoding), text.data(), &sourceLength, made.data(), &length, kSubstitute);
  made.resize(length);
  return made;
}

/** True when the conversion inserted substitutes. */
bool has_more_substitutes(std::string_view made, std::string_view source) {
  return std::count(made.begin(), made.end(), kSubstitute) > std::count(source.begin(), source.end(), kSubstitute);
}

size_t next_line_end(std::string_view text) {
  return std::min(text.find_first_of("\r\n"), text.size());
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const Utf8Character character = first_character(text);
    if (!character.IsValid()) return false;
    text.remove_prefix(character.length);
  }
  return true;
}

std::string as_hexadecimal(char byte) {
  char text[8];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
  return text;
}

/** UTF-16 has every character, and bytes that look like substitutes. */
std::optional<std::string> encoded_foreign_line(const std::string& line, TEncoding encoding) {
  std::optional<std::string> made = foreign_from_utf8(line, encoding);
  const bool hasLoss =
      foreign_name(encoding) == std::string_view("UTF-16LE") || foreign_name(encoding) == std::string_view("UTF-16BE")
          ? !is_utf8(line)
          : made && has_more_substitutes(*made, line);
  return hasLoss ? std::nullopt : made;
}

/** Appends the line's characters that the encoding cannot hold and that were not seen before. */
void append_outside(std::string_view line, TEncoding encoding, std::unordered_set<std::string>* seen,
                    std::vector<std::string>* outside) {
  while (!line.empty()) {
    const Utf8Character first = first_character(line);
    const std::string character(line.substr(0, first.IsValid() ? first.length : 1));
    line.remove_prefix(character.size());
    if (!seen->insert(character).second) continue;
    if (!first.IsValid()) {
      outside->push_back(as_hexadecimal(character.front()));
    } else if (!encoded_line(character, encoding)) {
      outside->push_back(character);
    }
  }
}

} // namespace

TExactLyrics::TExactLyrics(std::string bytes, std::optional<TEncoding> encoding)
    : fBytes(std::move(bytes)), fEncoding(encoding.value_or(encoding_of(koreva::detect_charset(fBytes.c_str())))),
      fHasByteOrderMark(fEncoding == TEncoding::kUtf8 && fBytes.starts_with(kByteOrderMark)) {
  std::string_view text = fBytes;
  const size_t end = std::min(text.find('\0'), text.size());
  fRest = text.substr(end);
  text = text.substr(0, end);
  if (fHasByteOrderMark) text.remove_prefix(kByteOrderMark.size());
  Split(text);
}

void TExactLyrics::Split(std::string_view text) {
  while (!text.empty()) {
    const size_t length = next_line_end(text);
    const size_t ends = length == text.size() ? 0 : text.substr(length, 2) == "\r\n" ? 2 : 1;
    fLayout.push_back({text.substr(0, length), text.substr(length, ends)});
    fLines.push_back(fEncoding == TEncoding::kUtf8 ? std::string(fLayout.back().bytes)
                                                   : converted(convert_to_utf8, fLayout.back().bytes, fEncoding));
    text.remove_prefix(length + ends);
  }
}

bool TExactLyrics::IsUtf16() const {
  return fBytes.starts_with("\xFF\xFE") || fBytes.starts_with("\xFE\xFF");
}

std::vector<size_t> TExactLyrics::BrokenLines() const {
  std::vector<size_t> broken;
  size_t index = 0;
  for (const std::string& line : fLines) {
    const bool isBroken =
        fEncoding == TEncoding::kUtf8 ? !is_utf8(line) : has_more_substitutes(line, fLayout[index].bytes);
    if (isBroken) broken.push_back(index);
    ++index;
  }
  return broken;
}

std::optional<std::string> TExactLyrics::WithLines(const std::list<std::string>& lines) const {
  std::string made = fHasByteOrderMark ? std::string(kByteOrderMark) : std::string();
  made.reserve(fBytes.size() + lines.size() * 4);
  auto old = fLines.begin();
  auto layout = fLayout.begin();
  for (const std::string& line : lines) {
    if (line == *old++) {
      made.append(layout->bytes);
    } else {
      const std::optional<std::string> encoded = encoded_line(line, fEncoding);
      if (!encoded) return {};
      made.append(*encoded);
    }
    made.append(layout++->end);
  }
  return made.append(fRest);
}

std::optional<std::string> TExactLyrics::InEncoding(TEncoding encoding, std::optional<std::string_view> lineEnd) const {
  std::string made;
  made.reserve(fBytes.size());
  auto layout = fLayout.begin();
  for (const std::string& line : fLines) {
    const std::optional<std::string> encoded =
        encoding == fEncoding ? std::string(layout->bytes) : encoded_line(line, encoding);
    if (!encoded) return {};
    made.append(*encoded).append(layout->end.empty() ? "" : lineEnd.value_or(layout->end));
    ++layout;
  }
  return made;
}

std::optional<std::string> encoded_line(const std::string& line, TEncoding encoding) {
  if (encoding == TEncoding::kUtf8) return line;
  if (is_foreign(encoding)) return encoded_foreign_line(line, encoding);
  // In JIS an ESC in the text would be read as a change of the character set.
  if (encoding == TEncoding::kJis && line.find('\x1B') != std::string::npos) return {};
  std::string made = converted(convert_from_utf8, line, encoding);
  if (has_more_substitutes(made, line)) return {};
  return made;
}

std::vector<std::string> characters_outside(const std::string& line, TEncoding encoding) {
  std::unordered_set<std::string> seen;
  std::vector<std::string> outside;
  append_outside(line, encoding, &seen, &outside);
  return outside;
}

std::vector<std::string> characters_outside(const std::vector<std::string>& lines, TEncoding encoding) {
  std::unordered_set<std::string> seen;
  std::vector<std::string> outside;
  for (const std::string& line : lines) {
    if (!encoded_line(line, encoding)) append_outside(line, encoding, &seen, &outside);
  }
  return outside;
}
