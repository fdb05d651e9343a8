#include "lyrics/export.h"

#include "common/koreva.h"
#include "lyrics/sung_lines.h"
#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

/** The extended tag with a period before the hundredths, in the given brackets. */
std::string dotted_tag(long timeMs, char open = '[', char close = ']') {
  std::string tag;
  time_to_time_tag(timeMs, &tag, true);
  tag.front() = open;
  tag[6] = '.';
  tag.back() = close;
  return tag;
}

/** The words, each after its time plus `moveMs`. A first word without a time gets the line's. */
std::string words_with_times(const TTaggedLine& line, long moveMs) {
  std::string text;
  const auto put_time = [&](long timeMs) { text += dotted_tag(timeMs + moveMs, '<', '>'); };
  for (const TTaggedLine::TWord& word : line.words) {
    const bool isBlank = word.text.find_first_not_of(" \t") == std::string::npos;
    if (word.timeMs || !isBlank) put_time(word.timeMs.value_or(line.timesMs.front()));
    text += word.text;
  }
  if (line.endMs) put_time(*line.endMs);
  return text;
}

/** All tags stay in front of one line, since a line for each time would break the order of the lines; only words with
    times of their own need a line for each. */
void append_tagged(const TTaggedLine& line, bool withWords, std::string* bytes) {
  if (!withWords || !line.HasTimedWords()) {
    for (const long time : line.timesMs) *bytes += dotted_tag(time);
    *bytes += line.Text() + "\n";
    return;
  }
  for (const long time : line.timesMs) {
    *bytes += dotted_tag(time) + words_with_times(line, time - line.timesMs.front()) + "\n";
  }
}

TExported as_lyrics(const std::list<std::string>& lines, bool withWords) {
  TExported exported;
  for (const std::string& line : lines) {
    const TTaggedLine parts = take_apart(line);
    if (parts.timesMs.empty()) {
      exported.bytes += line + "\n";
    } else {
      append_tagged(parts, withWords, &exported.bytes);
    }
  }
  return exported;
}

std::string subtitle_time(long ms) {
  char text[64];
  std::snprintf(text, sizeof text, "%02ld:%02ld:%02ld,%03ld", ms / 3600000, ms / 60000 % 60, ms / 1000 % 60, ms % 1000);
  return text;
}

TExported as_subtitles(const std::list<std::string>& lines) {
  TExported exported;
  long number = 0;
  for (const TCue& cue : cues_of(lines, &exported.linesLeftOut)) {
    exported.bytes += std::to_string(++number) + "\n" + subtitle_time(cue.startMs) + " --> " +
                      subtitle_time(cue.endMs) + "\n" + cue.text + "\n\n";
  }
  return exported;
}

bool has_what_it_needs(const std::list<std::string>& lines, TExportFormat format) {
  return std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
    const TTaggedLine parts = take_apart(line);
    return !parts.timesMs.empty() && (format != TExportFormat::kEnhanced || parts.HasTimedWords());
  });
}

} // namespace

std::optional<TExported> export_lyrics(const std::list<std::string>& lines, TExportFormat format) {
  if (!has_what_it_needs(lines, format)) return {};
  return format == TExportFormat::kSubtitles ? as_subtitles(lines)
                                             : as_lyrics(lines, format == TExportFormat::kEnhanced);
}

std::string export_name(const std::string& name, TExportFormat format) {
  constexpr const char* kExtensions[kExportFormats] = {"dotted.lrc", "enhanced.lrc", "srt"};
  return koreva::reext(name, kExtensions[static_cast<int>(format)]);
}

std::string plain_export_name(const std::string& name) {
  return koreva::reext(name, "lrc");
}
