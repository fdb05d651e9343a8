#include "lyrics/exact_lyrics.h"

#include "common/koreva.h"
#include "lyrics/lyrics_file.h"
#include "platform/support/text_encoding.h"

#include <algorithm>
#include <cstdio>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
constexpr char kSubstitute = 0x1A;

using Converter = status_t (*)(uint32, const char*, size_t*, char*, size_t*, char);

std::string converted(Converter converter, std::string_view text, long encoding) {
  std::string made(worst_case_from_utf8(text.size()), '\0');
  size_t sourceLength = text.size();
  size_t length = made.size();
  converter(static_cast<uint32>(cvt_enum_ec_to_bconv(encoding)), text.data(), &sourceLength, made.data(), &length,
            kSubstitute);
  made.resize(length);
  return made;
}

/** True when the conversion had to put substitutes where there were none. */
bool has_more_substitutes(std::string_view made, std::string_view source) {
  return std::count(made.begin(), made.end(), kSubstitute) > std::count(source.begin(), source.end(), kSubstitute);
}

size_t next_line_end(std::string_view text) {
  return std::min(text.find_first_of("\r\n"), text.size());
}

/** The bytes of the UTF-8 character at the start; 0 for what is none. */
size_t character_length(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  if (lead < 0x80) return 1;
  if (lead < 0xC2 || lead > 0xF4) return 0;
  const size_t length = lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
  if (text.size() < length) return 0;
  for (size_t i = 1; i < length; ++i) {
    if ((static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) return 0;
  }
  return length;
}

bool is_utf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = character_length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

std::string as_hexadecimal(char byte) {
  char text[8];
  std::snprintf(text, sizeof text, "\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(byte)));
  return text;
}

} // namespace

TExactLyrics::TExactLyrics(std::string bytes, long readEncoding)
    : fBytes(std::move(bytes)),
      fEncoding(readEncoding == kDetectEncoding ? koreva::detect_charset(fBytes.c_str()) : readEncoding),
      fHasByteOrderMark(fEncoding == 0 && fBytes.starts_with(kByteOrderMark)) {
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
    fLines.push_back(fEncoding == 0 ? std::string(fLayout.back().bytes)
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
    const bool isBroken = fEncoding == 0 ? !is_utf8(line) : has_more_substitutes(line, fLayout[index].bytes);
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

std::optional<std::string> TExactLyrics::InEncoding(long encoding, std::optional<std::string_view> lineEnd) const {
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

std::optional<std::string> encoded_line(const std::string& line, long encoding) {
  if (encoding == 0) return line;
  // In JIS an ESC of the text's own would be read as a change of the character set.
  if (cvt_enum_ec_to_bconv(encoding) == B_JIS_CONVERSION && line.find('\x1B') != std::string::npos) return {};
  std::string made = converted(convert_from_utf8, line, encoding);
  if (has_more_substitutes(made, line)) return {};
  return made;
}

std::vector<std::string> characters_outside(const std::string& line, long encoding) {
  std::vector<std::string> outside;
  for (size_t at = 0; at < line.size();) {
    const size_t length = character_length(std::string_view(line).substr(at));
    const std::string character = line.substr(at, std::max<size_t>(length, 1));
    const std::string name = length == 0 ? as_hexadecimal(line[at]) : character;
    const bool isHeld = length != 0 && encoded_line(character, encoding).has_value();
    if (!isHeld && std::find(outside.begin(), outside.end(), name) == outside.end()) outside.push_back(name);
    at += character.size();
  }
  return outside;
}
