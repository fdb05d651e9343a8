#include "editviews/sung_line.h"

#include "lyrics/time_tags.h"

#include <algorithm>
#include <cctype>

int32 sung_time(const std::string& line) {
  long timeMs = 0;
  bool extended = false;
  // "[Chorus]" reads as a tag of no time: nothing is sung then.
  if (line.size() < 2 || !std::isdigit(static_cast<unsigned char>(line[1]))) return -1;
  if (!time_tag_to_time(line, &timeMs, &extended)) return -1;
  return static_cast<int32>(std::clamp<long>(timeMs, -1, INT32_MAX));
}

void TSungLine::Clear() {
  fTimesMs.clear();
  fUntilMs = fFromMs; // to be looked for anew
}

void TSungLine::Append(const std::string& line) {
  fTimesMs.push_back(sung_time(line));
  fUntilMs = fFromMs;
}

void TSungLine::Change(int32 row, const std::string& line) {
  fTimesMs[static_cast<size_t>(row)] = sung_time(line);
  fUntilMs = fFromMs;
}

bool TSungLine::HasTimes() const {
  return std::any_of(fTimesMs.begin(), fTimesMs.end(), [](int32 timeMs) { return timeMs >= 0; });
}

int32 TSungLine::RowAt(int32 positionMs) {
  if (positionMs >= fFromMs && positionMs < fUntilMs && fRow < static_cast<int32>(fTimesMs.size())) return fRow;
  fRow = -1;
  fFromMs = 0;
  fUntilMs = INT32_MAX;
  for (size_t i = 0; i < fTimesMs.size(); ++i) {
    const int32 timeMs = fTimesMs[i];
    if (timeMs > positionMs) fUntilMs = std::min(fUntilMs, timeMs);
    if (timeMs < 0 || timeMs > positionMs || timeMs < fFromMs) continue;
    fRow = static_cast<int32>(i);
    fFromMs = timeMs;
  }
  return fRow;
}
