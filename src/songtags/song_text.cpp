#include "songtags/song_text.h"

#include "lyrics/export.h"
#include "lyrics/line_times.h"
#include "lyrics/sung_lines.h"
#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "platform/support/utf8.h"

#include <algorithm>
#include <optional>

namespace {

constexpr const char* kSubstitute = "\xEF\xBF\xBD";

std::list<std::string> lines_of(std::string_view text) {
  std::list<std::string> lines;
  while (!text.empty()) {
    const size_t end = std::min(text.find('\n'), text.size());
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return lines;
}

/** The extended tag for a time, to the nearest hundredth. */
std::string tag_for(long timeMs) {
  std::string tag;
  time_to_time_tag(timeMs + 5, &tag, true);
  return tag;
}

} // namespace

std::string normalized_text(std::string_view text) {
  text = text.substr(0, text.find('\0'));
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const Utf8Character character = first_character(text);
    if (text.front() == '\r') {
      if (!text.starts_with("\r\n")) result.push_back('\n');
    } else if (character.IsValid()) {
      result += text.substr(0, character.length);
    } else {
      result += kSubstitute;
    }
    text.remove_prefix(character.length);
  }
  result.erase(result.find_last_not_of('\n') + 1);
  return result;
}

std::string text_for_song(const std::list<std::string>& lines) {
  if (const auto dotted = export_lyrics(lines, TExportFormat::kDotted)) return normalized_text(dotted->bytes);
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return normalized_text(text);
}

std::string plain_text(const std::string& text) {
  std::string plain;
  for (const std::string& line : lines_of(text)) {
    if (bracket_kind(line) != TBracketKind::kHeader) plain += take_apart(line).Text() + "\n";
  }
  return normalized_text(plain);
}

std::vector<TSyncedLine> synced_lines(const std::string& text) {
  const std::list<std::string> lines = lines_of(text);
  std::optional<long> offset;
  for (const std::string& line : lines) {
    if (!offset) offset = offset_header(line);
  }
  std::vector<TSyncedLine> synced;
  for (const std::string& line : lines) {
    const TTaggedLine parts = take_apart(line);
    for (const long time : parts.timesMs)
      synced.push_back({static_cast<int32>(sung_at(time, offset.value_or(0))), parts.Text()});
  }
  std::stable_sort(synced.begin(), synced.end(), [](const auto& a, const auto& b) { return a.timeMs < b.timeMs; });
  return synced;
}

std::string synced_text(const std::vector<TSyncedLine>& lines) {
  std::string text;
  for (const TSyncedLine& line : lines) {
    std::string tag = tag_for(line.timeMs);
    tag[6] = '.';
    text += tag + line.text + "\n";
  }
  return normalized_text(text);
}

std::list<std::string> document_lines(const std::string& text) {
  std::list<std::string> lines = lines_of(text);
  for (std::string& line : lines) {
    const std::vector<TTagSpan> tags = time_tags_in(line);
    for (auto tag = tags.rbegin(); tag != tags.rend(); ++tag) {
      if (tag->isDotted && line[tag->begin] == '[')
        line.replace(tag->begin, tag->length, tag_for(tag_time(line, *tag)));
    }
  }
  return lines;
}
