#include "player/app/song_marks.h"

#include "platform/app/message.h"
#include "player/model/info_record.h"
#include "player/model/playlist.h"

#include <algorithm>

bool TSongMarks::Take(const BMessage& message) {
  std::string title;
  if (message.FindString("Title", &title) != B_OK) return false;
  constexpr int32 kMostMarks = 20000;
  auto marks = std::make_shared<std::vector<int32>>();
  int32 timeMs = 0;
  for (int32 i = 0; i < kMostMarks && message.FindInt32("TimeMs", i, &timeMs) == B_OK; ++i) marks->push_back(timeMs);
  std::ranges::sort(*marks);
  fTitle = cut_title(title);
  fClick = message.GetBool("Clicks");
  fMarksMs = std::move(marks);
  return true;
}

std::shared_ptr<const std::vector<int32>> TSongMarks::Of(const TSong* song) const {
  const bool isThisSong = song && song->played && cut_title(song->title) == fTitle;
  return isThisSong ? fMarksMs : nullptr;
}
