#include "lyrics/line_times.h"

#include "lyrics/tag_spans.h"

#include <algorithm>
#include <cstdlib>

namespace {

constexpr long kMostOffsetMs = 3600000;

int32 bounded(long ms) {
  return static_cast<int32>(std::min<long>(ms, INT32_MAX));
}

/** A tag in angle brackets belongs to a word. */
template <typename Visit>
void for_each_leading_time(const std::string& line, Visit visit) {
  for (size_t at = 0; at < line.size() && line[at] == '[';) {
    const std::optional<TTagSpan> tag = time_tag_at(line, at);
    if (!tag) return;
    visit(tag_time(line, *tag));
    at = tag->End();
  }
}

} // namespace

std::vector<long> leading_times(const std::string& line) {
  std::vector<long> timesMs;
  for_each_leading_time(line, [&timesMs](long timeMs) { timesMs.push_back(timeMs); });
  return timesMs;
}

std::optional<long> offset_header(const std::string& line) {
  const std::optional<std::string> value = header_value(line, "offset");
  if (!value) return {};
  return std::clamp(std::strtol(value->c_str(), nullptr, 10), -kMostOffsetMs, kMostOffsetMs);
}

long sung_at(long tagMs, long offsetMs) {
  return std::max(tagMs - offsetMs, 0L);
}

void TLineTimes::Clear() {
  *this = TLineTimes();
}

void TLineTimes::Append(const std::string& line) {
  fFirstMs.push_back(-1);
  Store(static_cast<int32>(fFirstMs.size()) - 1, line);
}

void TLineTimes::Change(int32 row, const std::string& line) {
  fFurtherMs.erase(row);
  fOffsetsMs.erase(row);
  Store(row, line);
}

void TLineTimes::Store(int32 row, const std::string& line) {
  int32 firstMs = -1;
  std::vector<long> furtherMs;
  for_each_leading_time(line, [&](long timeMs) {
    if (firstMs < 0)
      firstMs = bounded(timeMs);
    else
      furtherMs.push_back(timeMs);
  });
  fFirstMs[static_cast<size_t>(row)] = firstMs;
  if (!furtherMs.empty()) fFurtherMs[row] = std::move(furtherMs);
  if (const std::optional<long> offsetMs = offset_header(line)) fOffsetsMs[row] = *offsetMs;
  fUntilMs = fFromMs; // invalidates the cached row
}

template <typename Visit>
void TLineTimes::ForEachTime(Visit visit) const {
  const long offsetMs = Offset();
  for (size_t i = 0; i < fFirstMs.size(); ++i)
    if (fFirstMs[i] >= 0) visit(static_cast<int32>(i), bounded(sung_at(fFirstMs[i], offsetMs)));
  for (const auto& [row, timesMs] : fFurtherMs)
    for (const long timeMs : timesMs) visit(row, bounded(sung_at(timeMs, offsetMs)));
}

bool TLineTimes::HasTimes() const {
  return std::any_of(fFirstMs.begin(), fFirstMs.end(), [](int32 timeMs) { return timeMs >= 0; });
}

std::optional<int32> TLineTimes::OnlyTagOf(int32 row) const {
  const int32 timeMs = fFirstMs[static_cast<size_t>(row)];
  if (timeMs < 0 || fFurtherMs.contains(row)) return {};
  return timeMs;
}

std::optional<int32> TLineTimes::TimeOf(int32 row) const {
  const int32 timeMs = fFirstMs[static_cast<size_t>(row)];
  if (timeMs < 0) return {};
  return bounded(sung_at(timeMs, Offset()));
}

int32 TLineTimes::RowAt(int32 positionMs) {
  if (positionMs >= fFromMs && positionMs < fUntilMs) return fRow;
  fRow = -1;
  fFromMs = 0;
  fUntilMs = INT32_MAX;
  ForEachTime([&](int32 row, int32 timeMs) {
    if (timeMs > positionMs) {
      fUntilMs = std::min(fUntilMs, timeMs);
    } else if (timeMs > fFromMs || (timeMs == fFromMs && row > fRow)) {
      fRow = row;
      fFromMs = timeMs;
    }
  });
  return fRow;
}

std::vector<int32> TLineTimes::Times() const {
  std::vector<int32> timesMs;
  ForEachTime([&timesMs](int32, int32 timeMs) { timesMs.push_back(timeMs); });
  std::sort(timesMs.begin(), timesMs.end());
  return timesMs;
}
