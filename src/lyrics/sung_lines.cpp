#include "lyrics/sung_lines.h"

#include "lyrics/line_times.h"
#include "lyrics/tag_spans.h"

#include <algorithm>

namespace {

/** Duration of the last line without an end of its own. */
constexpr long kLastCueMs = 5000;

bool is_blank(const std::string& text) {
  return text.find_first_not_of(" \t") == std::string::npos;
}

long offset_of(const std::list<std::string>& lines) {
  for (const std::string& line : lines)
    if (const std::optional<long> offsetMs = offset_header(line)) return *offsetMs;
  return 0;
}

void append_line(std::string* text, const std::string& line) {
  if (is_blank(line)) return;
  if (!text->empty()) text->push_back('\n');
  text->append(line);
}

struct TTimedLines {
  std::vector<long> timesMs;
  std::optional<long> endMs;
  std::string text;
};

/** Each tagged line together with the untagged lines that follow it. */
std::vector<TTimedLines> timed_lines(const std::list<std::string>& lines, long* linesLeftOut) {
  std::vector<TTimedLines> sung;
  *linesLeftOut = 0;
  for (const std::string& line : lines) {
    const TBracketKind kind = bracket_kind(line);
    if (kind == TBracketKind::kTimeTag) {
      const TTaggedLine parts = take_apart(line);
      sung.push_back({parts.timesMs, parts.endMs, {}});
      append_line(&sung.back().text, parts.Text());
    } else if (kind == TBracketKind::kNone && !sung.empty()) {
      append_line(&sung.back().text, take_apart(line).Text());
    } else if ((kind == TBracketKind::kNone && !is_blank(line)) || kind == TBracketKind::kOddTag) {
      ++*linesLeftOut;
    }
  }
  return sung;
}

/** Sorted by time, with those of the same time merged. A cue without an end of its own has the end 0. */
std::vector<TCue> sorted_cues(const std::vector<TTimedLines>& sung, long offsetMs) {
  std::vector<TCue> cues;
  for (const TTimedLines& line : sung) {
    for (const long time : line.timesMs) {
      // The end belongs to the first time; at the others the line lasts as long.
      const long length = line.endMs ? std::max(*line.endMs - line.timesMs.front(), 0L) : 0;
      const long start = sung_at(time, offsetMs);
      cues.push_back({start, length > 0 ? start + length : 0, line.text});
    }
  }
  std::stable_sort(cues.begin(), cues.end(), [](const TCue& a, const TCue& b) { return a.startMs < b.startMs; });
  std::vector<TCue> merged;
  for (const TCue& cue : cues) {
    if (merged.empty() || merged.back().startMs != cue.startMs) {
      merged.push_back(cue);
    } else {
      append_line(&merged.back().text, cue.text);
      merged.back().endMs = std::max(merged.back().endMs, cue.endMs);
    }
  }
  return merged;
}

} // namespace

std::string TTaggedLine::Text() const {
  std::string text;
  for (const TWord& word : words) text += word.text;
  return text;
}

bool TTaggedLine::HasTimedWords() const {
  return std::any_of(words.begin(), words.end(), [](const TWord& word) { return word.timeMs.has_value(); });
}

TTaggedLine take_apart(const std::string& line) {
  TTaggedLine parts;
  const std::vector<TTagSpan> tags = time_tags_in(line);
  parts.timesMs = leading_times(line);
  size_t next = parts.timesMs.size();
  size_t at = next > 0 ? tags[next - 1].End() : 0;
  std::optional<long> time;
  for (; next < tags.size(); ++next) {
    const TTagSpan& tag = tags[next];
    if (time || tag.begin > at) parts.words.push_back({time, line.substr(at, tag.begin - at)});
    time = tag_time(line, tag);
    at = tag.End();
  }
  if (is_blank(line.substr(at)) && time) {
    parts.endMs = time;
  } else if (time || at < line.size()) {
    parts.words.push_back({time, line.substr(at)});
  }
  return parts;
}

std::vector<TCue> cues_of(const std::list<std::string>& lines, long* linesLeftOut) {
  std::vector<TCue> cues = sorted_cues(timed_lines(lines, linesLeftOut), offset_of(lines));
  for (size_t i = 0; i < cues.size(); ++i) {
    const bool isLast = i + 1 == cues.size();
    const long limit = isLast ? std::max(cues[i].endMs, cues[i].startMs + kLastCueMs) : cues[i + 1].startMs;
    cues[i].endMs = cues[i].endMs > 0 ? std::min(cues[i].endMs, limit) : limit;
  }
  // A line without words only ends the previous one.
  std::erase_if(cues, [](const TCue& cue) { return cue.text.empty(); });
  return cues;
}
