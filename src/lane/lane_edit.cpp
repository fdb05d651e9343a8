#include "lane/lane_edit.h"

#include "lyrics/bulk_tags.h"
#include "lyrics/tag_spans.h"

#include <algorithm>

namespace {

constexpr size_t kStandardLength = 7; // [mm:ss]
constexpr long kSecondMs = 1000;
constexpr long kHundredthMs = 10;

/** The new tag is as long as the old one. */
void retime(std::string* line, const TTagSpan& tag, long timeMs) {
  line->replace(tag.begin, tag.length, retimed_tag(line->substr(tag.begin, tag.length), timeMs));
}

std::string with_tag_moved(std::string line, size_t index, long timeMs) {
  const std::vector<TTagSpan> tags = time_tags_in(line);
  if (index >= tags.size()) return line;
  const long oldMs = tag_time(line, tags[index]);
  const bool isLineTag = index == 0 && count_leading_tags(line, tags) == 1;
  const bool isRepeated =
      isLineTag && tags.size() > 1 && tags[1].begin == tags[0].End() && tag_time(line, tags[1]) == oldMs;
  retime(&line, tags[index], timeMs);
  if (isRepeated) retime(&line, tags[1], timeMs); // the first word's own tag
  return line;
}

std::string with_later_moved(std::string line, long fromMs, long stepMs) {
  const std::vector<TTagSpan> tags = time_tags_in(line);
  if (count_leading_tags(line, tags) == 0) return line;
  for (const TTagSpan& tag : tags) {
    const long timeMs = tag_time(line, tag);
    if (timeMs >= fromMs) retime(&line, tag, timeMs + shift_step(stepMs, tag.length != kStandardLength));
  }
  return line;
}

} // namespace

TLinesChange lines_moved(std::span<const std::string> lines, const TLaneMove& move, long offsetMs) {
  if (move.row < 0 || move.row >= static_cast<int32>(lines.size())) return {};
  const std::string& own = lines[static_cast<size_t>(move.row)];
  if (!move.movesLater) return {move.row, 1, {with_tag_moved(own, move.tag, move.toMs + offsetMs)}};
  TLinesChange change{0, 0, {}};
  std::list<std::string> unchanged; // since the last changed line
  for (size_t row = 0; row < lines.size(); ++row) {
    std::string line = with_later_moved(lines[row], move.fromMs + offsetMs, long{move.toMs} - move.fromMs);
    const bool isChanged = line != lines[row];
    if (isChanged && change.lines.empty()) change.first = static_cast<int32>(row);
    if (isChanged) change.lines.splice(change.lines.end(), unchanged);
    if (isChanged) change.lines.push_back(std::move(line));
    if (!isChanged && !change.lines.empty()) unchanged.push_back(lines[row]);
  }
  change.removed = static_cast<int32>(change.lines.size());
  return change;
}

TLinesChange line_tagged(std::span<const std::string> lines, int32 row, long tagMs, TTagForm form) {
  if (row < 0 || row >= static_cast<int32>(lines.size())) return {};
  const long unit = form == TTagForm::kStandard ? kSecondMs : kHundredthMs;
  const long timeMs = (std::clamp(tagMs, 0L, kLastTagTime) + unit / 2) / unit * unit;
  const TStampedLine stamped = stamp(lines[static_cast<size_t>(row)], std::min(timeMs, kLastTagTime), form);
  if (stamped.movedByMs) return {};
  return {row, 1, {stamped.line}};
}
