#include "lane/lane_proposals.h"

#include "lyrics/tag_spans.h"
#include "lyrics/time_tags.h"
#include "lyrics/word_lines.h"

#include <algorithm>
#include <map>
#include <optional>

namespace {

constexpr size_t kStandardLength = 7; // [mm:ss]
constexpr long kHundredthMs = 10;

std::optional<TTagSpan> tag_to_improve(const std::string& line) {
  if (line.empty() || line.front() != '[') return {};
  const std::vector<TTagSpan> tags = time_tags_in(line);
  const bool isOnly = count_leading_tags(line, tags) == 1 && tags.front().length != kStandardLength;
  return isOnly ? std::optional(tags.front()) : std::nullopt;
}

std::string improved(const std::string& line, const TTagSpan& tag, long tagMs) {
  std::string changed = line;
  changed.replace(tag.begin, tag.length, retimed_tag(line.substr(tag.begin, tag.length), tagMs));
  return has_word_times(line) ? with_words_moved(line, changed) : changed;
}

} // namespace

long improved_tag_ms(const TProposedTag& tag, long offsetMs) {
  const long tagMs = std::clamp(tag.toMs + offsetMs, 0L, kLastTagTime);
  return std::min((tagMs + kHundredthMs / 2) / kHundredthMs * kHundredthMs, kLastTagTime);
}

std::vector<std::pair<int32, int32>> times_to_improve(std::span<const std::string> lines, long offsetMs) {
  std::vector<std::pair<int32, int32>> times;
  for (size_t row = 0; row < lines.size(); ++row)
    if (const std::optional<TTagSpan> tag = tag_to_improve(lines[row]))
      times.emplace_back(static_cast<int32>(row), static_cast<int32>(tag_time(lines[row], *tag) - offsetMs));
  return times;
}

TLinesChange lines_improved(std::span<const std::string> lines, std::span<const TProposedTag> accepted, long offsetMs,
                            int32* count) {
  std::map<size_t, std::string> changed;
  for (const TProposedTag& each : accepted) {
    if (each.line < 0 || each.line >= static_cast<int32>(lines.size())) continue;
    const auto row = static_cast<size_t>(each.line);
    const std::optional<TTagSpan> tag = tag_to_improve(lines[row]);
    if (!tag || tag_time(lines[row], *tag) != each.fromMs + offsetMs) continue;
    changed[row] = improved(lines[row], *tag, improved_tag_ms(each, offsetMs));
  }
  *count = static_cast<int32>(changed.size());
  if (changed.empty()) return {};
  const size_t first = changed.begin()->first;
  TLinesChange change{static_cast<int32>(first), 0, {}};
  for (size_t row = first; row <= changed.rbegin()->first; ++row)
    change.lines.push_back(changed.contains(row) ? changed[row] : lines[row]);
  change.removed = static_cast<int32>(change.lines.size());
  return change;
}
