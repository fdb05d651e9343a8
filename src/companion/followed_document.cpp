#include "companion/followed_document.h"

#include "platform/app/message.h"
#include "plugin/message_codes.h"

#include <algorithm>

namespace {

std::vector<std::string> lines_of(const BMessage& notice) {
  std::vector<std::string> lines;
  std::string line;
  for (int32 i = 0; notice.FindString("Line", i, &line) == B_OK; ++i) lines.push_back(line);
  return lines;
}

} // namespace

bool TFollowedDocument::Take(const BMessage& notice) {
  switch (notice.what) {
  case kMsgDocumentWhole:
    return TakeWhole(notice);
  case kMsgDocumentLines:
    return TakeLines(notice);
  default:
    Forget();
    return true;
  }
}

void TFollowedDocument::Forget() {
  *this = TFollowedDocument();
}

bool TFollowedDocument::TakeWhole(const BMessage& notice) {
  fIsKnown = notice.FindString("Title", &fTitle) == B_OK && notice.FindString("Path", &fPath) == B_OK &&
             notice.FindInt32("Number", &fNumber) == B_OK;
  fLines = lines_of(notice);
  return true;
}

bool TFollowedDocument::TakeLines(const BMessage& notice) {
  const int32 number = notice.GetInt32("Number");
  const int32 first = notice.GetInt32("First", -1);
  const int32 removed = notice.GetInt32("Removed", -1);
  const auto count = static_cast<int64>(fLines.size());
  if (!fIsKnown || number != fNumber + 1 || first < 0 || removed < 0 || int64{first} + removed > count) return false;
  fNumber = number;
  const std::vector<std::string> lines = lines_of(notice);
  const auto place = fLines.erase(fLines.begin() + first, fLines.begin() + first + removed);
  fLines.insert(place, lines.begin(), lines.end());
  return true;
}

bool TFollowedDocument::BelongsTo(const std::string& title, const std::string& lyricsPath) const {
  const bool isBlank = std::all_of(fLines.begin(), fLines.end(), [](const std::string& line) { return line.empty(); });
  if (!fIsKnown || isBlank) return false;
  return fTitle == title || title.empty() || (!fPath.empty() && fPath == lyricsPath);
}
