#include "lyrics/tag_spans.h"

#include "lyrics/time_tags.h"

#include <algorithm>
#include <string_view>

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/** True when the text matches the pattern, in which 0 means any digit. */
bool begins_like(std::string_view text, std::string_view pattern) {
  return text.size() >= pattern.size() && std::equal(pattern.begin(), pattern.end(), text.begin(),
                                                     [](char p, char c) { return p == '0' ? is_digit(c) : p == c; });
}

struct TShape {
  std::string_view pattern;
  bool isDotted;
};
constexpr TShape kShapes[] = {
    {"[00:00]", false},    {"[00:00:00]", false}, {"[00:00.00]", true},
    {"[00:00.000]", true}, {"<00:00.00>", true},  {"<00:00.000>", true},
};

} // namespace

std::optional<TTagSpan> time_tag_at(std::string_view line, size_t at) {
  const std::string_view rest = line.substr(std::min(at, line.size()));
  const auto* const shape = std::find_if(std::begin(kShapes), std::end(kShapes),
                                         [rest](const TShape& each) { return begins_like(rest, each.pattern); });
  if (shape == std::end(kShapes)) return {};
  return TTagSpan{at, shape->pattern.size(), shape->isDotted};
}

std::vector<TTagSpan> time_tags_in(const std::string& line) {
  std::vector<TTagSpan> spans;
  for (size_t at = line.find_first_of("[<"); at != std::string::npos; at = line.find_first_of("[<", at)) {
    if (const std::optional<TTagSpan> tag = time_tag_at(line, at)) spans.push_back(*tag);
    at = !spans.empty() && spans.back().begin == at ? spans.back().End() : at + 1;
  }
  return spans;
}

size_t count_leading_tags(const std::string& line, const std::vector<TTagSpan>& tags) {
  size_t count = 0;
  size_t at = 0;
  while (count < tags.size() && tags[count].begin == at && line[at] == '[') at = tags[count++].End();
  return count;
}

std::string tag_text(const std::string& line, const TTagSpan& span) {
  std::string text = line.substr(span.begin, span.length);
  text.front() = '[';
  text.back() = ']';
  return text;
}

long tag_time(const std::string& line, const TTagSpan& span) {
  long time = 0;
  bool isExtended = false;
  time_tag_to_time(tag_text(line, span), &time, &isExtended);
  return time;
}

TBracketKind bracket_kind(const std::string& line) {
  if (line.empty() || line.front() != '[') return TBracketKind::kNone;
  if (time_tag_at(line, 0)) return TBracketKind::kTimeTag;
  const size_t end = std::min(line.find(']'), line.size());
  const std::string_view content = std::string_view(line).substr(1, end - 1);
  const size_t name =
      static_cast<size_t>(std::find_if_not(content.begin(), content.end(), is_letter) - content.begin());
  if (name > 0 && name < content.size() && content[name] == ':') return TBracketKind::kHeader;
  const bool isNumeric = content.find_first_not_of("0123456789:.") == std::string_view::npos;
  const bool isOdd = content.find(':') != std::string_view::npos && (isNumeric || is_digit(content.front()));
  return isOdd ? TBracketKind::kOddTag : TBracketKind::kWord;
}

std::optional<std::string> header_value(const std::string& line, const std::string& name) {
  const std::string start = "[" + name + ":";
  if (!line.starts_with(start)) return {};
  const size_t end = line.find(']');
  if (end == std::string::npos) return {};
  return line.substr(start.size(), end - start.size());
}

std::string retimed_tag(const std::string& tag, long timeMs) {
  constexpr size_t kStandardLength = 7;     // [mm:ss]
  constexpr size_t kHundredthsLength = 10;  // [mm:ss:cc]
  constexpr size_t kThousandthsLength = 11; // [mm:ss.ccc]
  constexpr size_t kSeparator = 6;
  std::string changed;
  time_to_time_tag(timeMs, &changed, tag.size() != kStandardLength);
  changed.front() = tag.front();
  changed.back() = tag.back();
  if (tag.size() != kStandardLength) changed[kSeparator] = tag[kSeparator];
  if (tag.size() == kThousandthsLength) changed.insert(kHundredthsLength - 1, 1, tag[kHundredthsLength - 1]);
  return changed;
}
