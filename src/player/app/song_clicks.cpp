#include "player/app/song_clicks.h"

#include "platform/app/message.h"

#include <algorithm>

void TSongClicks::CountIn(const BMessage& message) {
  constexpr int32 kMostClicksBefore = 8;
  fCountInMs.clear();
  int32 timeMs = 0;
  for (int32 i = 0; i < kMostClicksBefore && message.FindInt32("TimeMs", i, &timeMs) == B_OK; ++i)
    fCountInMs.push_back(timeMs);
  std::ranges::sort(fCountInMs);
}

std::optional<std::vector<int32>> TSongClicks::Changed() {
  if (fMarksMs == fSentMarksMs && fCountInMs == fSentCountInMs) return {};
  fSentMarksMs = fMarksMs;
  fSentCountInMs = fCountInMs;
  std::vector<int32> timesMs = fCountInMs;
  if (fMarksMs) timesMs.insert(timesMs.end(), fMarksMs->begin(), fMarksMs->end());
  std::ranges::sort(timesMs);
  return timesMs;
}
