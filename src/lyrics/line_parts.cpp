#include "lyrics/line_parts.h"

#include "lyrics/tag_spans.h"
#include "platform/support/utf8.h"

namespace {

std::string_view last_character(std::string_view text) {
  size_t start = text.size() - 1;
  while (start > 0 && is_utf8_continuation(text[start])) --start;
  return text.substr(start);
}

/** Kana, Chinese characters and full-width forms; Hangul is written with blanks between words. */
bool is_written_without_blanks(char32_t code) {
  return code != kMalformedUtf8 && code >= 0x2E80 && code < 0x40000 && !(code >= 0xAC00 && code < 0xD800);
}

bool needs_blank(std::string_view left, std::string_view right) {
  if (left.empty() || right.empty() || left.back() == ' ' || right.front() == ' ') return false;
  return !is_written_without_blanks(first_character(last_character(left)).code) &&
         !is_written_without_blanks(first_character(right).code);
}

} // namespace

TLineParts parts_of(const std::string& line) {
  const std::vector<TTagSpan> tags = time_tags_in(line);
  const size_t count = count_leading_tags(line, tags);
  const size_t end = count == 0 ? 0 : tags[count - 1].End();
  return {line.substr(0, end), line.substr(end)};
}

std::string joined_lines(const std::list<std::string>& lines) {
  TLineParts joined;
  for (const std::string& line : lines) {
    const TLineParts more = parts_of(line);
    if (joined.tags.empty()) joined.tags = more.tags;
    if (needs_blank(joined.text, more.text)) joined.text += ' ';
    joined.text += more.text;
  }
  return joined.tags + joined.text;
}

std::list<std::string> split_line(const std::string& tags, const std::string& before, const std::string& after) {
  const size_t end = before.find_last_not_of(' ');
  const size_t start = after.find_first_not_of(' ');
  return {tags + before.substr(0, end == std::string::npos ? 0 : end + 1),
          start == std::string::npos ? std::string() : after.substr(start)};
}

std::string first_half(const std::string& text) {
  const size_t middle = text.size() / 2;
  const size_t left = text.rfind(' ', middle);
  const size_t right = text.find(' ', middle);
  if (left == std::string::npos || (right != std::string::npos && right - middle < middle - left))
    return text.substr(0, right);
  return text.substr(0, left);
}
