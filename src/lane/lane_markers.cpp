#include "lane/lane_markers.h"

#include "lyrics/line_times.h"
#include "lyrics/tag_spans.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <tuple>

namespace {

/** More rows than a lane can show at a legible size. */
constexpr int32 kRowsAround = 40;
/** Lines without a tag that are looked through for the next one with a tag. */
constexpr int32 kMostUntagged = 1000;
constexpr size_t kStandardLength = 7; // [mm:ss]
constexpr int32 kMarginMs = 1000;
/** A last line without an end, and an untagged line without a neighbour. */
constexpr int32 kOpenEndMs = 5000;

TMarkerKind kind_of(const std::string& line, const std::vector<TTagSpan>& tags, size_t tag, size_t leading) {
  if (tag < leading) return TMarkerKind::kLine;
  const bool isLast = tag + 1 == tags.size() && tags[tag].End() == line.size();
  return isLast ? TMarkerKind::kEnd : TMarkerKind::kWord;
}

/** The text up to the next tag. */
std::string text_after(const std::string& line, const std::vector<TTagSpan>& tags, size_t tag) {
  const size_t end = tag + 1 < tags.size() ? tags[tag + 1].begin : line.size();
  return line.substr(tags[tag].End(), end - tags[tag].End());
}

/** The text up to the first word that has a time of its own after the line's. */
std::string first_words(const std::string& line, const std::vector<TTagSpan>& tags, size_t leading) {
  const std::string text = text_after(line, tags, leading - 1);
  return text.empty() && leading < tags.size() ? text_after(line, tags, leading) : text;
}

void append_markers(const TLaneLyrics& lyrics, int32 row, std::vector<TLaneMarker>* markers) {
  const std::string& line = lyrics.lines[static_cast<size_t>(row)];
  if (line.empty() || line.front() != '[') return;
  const std::vector<TTagSpan> tags = time_tags_in(line);
  const size_t leading = count_leading_tags(line, tags);
  if (leading == 0) return;
  const std::string start = first_words(line, tags, leading);
  for (size_t tag = 0; tag < tags.size(); ++tag) {
    TLaneMarker marker;
    marker.kind = kind_of(line, tags, tag, leading);
    marker.row = row;
    marker.tag = tag;
    marker.timeMs = static_cast<int32>(tag_time(line, tags[tag]) - lyrics.offsetMs);
    marker.isMovable = row == lyrics.row;
    marker.isWholeSeconds = tags[tag].length == kStandardLength;
    if (marker.kind == TMarkerKind::kLine) marker.text = start;
    if (marker.kind == TMarkerKind::kWord) marker.text = text_after(line, tags, tag);
    const bool repeatsLineTag = tag == leading && tags[tag].begin == tags[leading - 1].End() && leading == 1 &&
                                !markers->empty() && markers->back().timeMs == marker.timeMs;
    if (!repeatsLineTag) markers->push_back(std::move(marker));
  }
}

void append_around(const TLaneLyrics& lyrics, int32 row, std::vector<TLaneMarker>* markers) {
  if (row < 0) return;
  const int32 end = std::min(row + kRowsAround + 1, static_cast<int32>(lyrics.lines.size()));
  for (int32 each = std::max(row - kRowsAround, 0); each < end; ++each) append_markers(lyrics, each, markers);
}

std::optional<int32> start_of(const TLaneLyrics& lyrics, int32 row) {
  const std::vector<long> times = leading_times(lyrics.lines[static_cast<size_t>(row)]);
  if (times.empty()) return {};
  return static_cast<int32>(times.front() - lyrics.offsetMs);
}

/** The start of the nearest line below or above that is sung after or before the time. */
std::optional<int32> neighbour_of(const TLaneLyrics& lyrics, int32 step, std::optional<int32> timeMs) {
  int32 row = lyrics.row + step;
  for (int32 i = 0; i < kMostUntagged && row >= 0 && row < static_cast<int32>(lyrics.lines.size()); ++i, row += step) {
    const std::optional<int32> startMs = start_of(lyrics, row);
    if (startMs && (!timeMs || (step > 0 ? *startMs > *timeMs : *startMs < *timeMs))) return startMs;
  }
  return {};
}

int32 end_of(const std::string& line, int32 startMs, long offsetMs) {
  const std::vector<TTagSpan> tags = time_tags_in(line);
  int32 endMs = startMs;
  for (size_t tag = count_leading_tags(line, tags); tag < tags.size(); ++tag)
    endMs = std::max(endMs, static_cast<int32>(tag_time(line, tags[tag]) - offsetMs));
  return endMs;
}

} // namespace

std::vector<TLaneMarker> markers_of(const TLaneLyrics& lyrics) {
  std::vector<TLaneMarker> markers;
  append_around(lyrics, lyrics.row, &markers);
  const bool isFar = lyrics.row < 0 || std::abs(lyrics.around - lyrics.row) > kRowsAround / 2;
  if (isFar) append_around(lyrics, lyrics.around, &markers);
  const auto before = [](const TLaneMarker& a, const TLaneMarker& b) {
    return std::tie(a.timeMs, a.row, a.tag) < std::tie(b.timeMs, b.row, b.tag);
  };
  std::ranges::sort(markers, before);
  const auto isSame = [](const TLaneMarker& a, const TLaneMarker& b) { return a.IsSame(b); };
  markers.erase(std::unique(markers.begin(), markers.end(), isSame), markers.end());
  return markers;
}

TLaneRange range_of_line(const TLaneLyrics& lyrics) {
  if (lyrics.row < 0 || lyrics.row >= static_cast<int32>(lyrics.lines.size())) return {0, kOpenEndMs};
  const std::optional<int32> ownMs = start_of(lyrics, lyrics.row);
  const std::optional<int32> nextMs = neighbour_of(lyrics, 1, ownMs);
  const int32 startMs = ownMs.value_or(neighbour_of(lyrics, -1, {}).value_or(nextMs.value_or(kMarginMs) - kMarginMs));
  const int32 openMs = end_of(lyrics.lines[static_cast<size_t>(lyrics.row)], startMs, lyrics.offsetMs);
  const int32 endMs = nextMs.value_or(std::max(openMs, startMs + kOpenEndMs));
  return {startMs - kMarginMs, std::max(endMs, startMs) + kMarginMs};
}
