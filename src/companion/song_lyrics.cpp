#include "companion/song_lyrics.h"

#include "common/koreva.h"
#include "lyrics/line_limit.h"
#include "lyrics/lyrics_file.h"
#include "platform/app/message.h"
#include "platform/app/node_monitor.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"

#include <list>
#include <string_view>
#include <utility>

namespace {

std::string folder_of(const std::string& path) {
  return path.substr(0, path.rfind('/') + 1);
}

} // namespace

TSongLyrics::TSongLyrics(Sonivo_FrontEnd* frontEnd, BHandler* owner)
    : fOwner(owner), fFinder(frontEnd, BMessenger(owner)) {}

TSongLyrics::~TSongLyrics() {
  stop_watching(fOwner);
}

bool TSongLyrics::SongIs(const std::string& title) {
  // A running search is not cancelled: its answer starts the next one.
  if (title == fTitle) return false;
  fTitle = title;
  fPath.clear();
  fLines.clear();
  fHasTooManyLines = false;
  stop_watching(fOwner);
  if (!title.empty() && fSearched.empty() && fFinder.Start()) fSearched = title;
  return true;
}

void TSongLyrics::SearchAnswered(const BMessage& answer) {
  if (answer.what == kMsgPlayerSilent) return; // the search continues
  const std::string searched = std::exchange(fSearched, {});
  if (searched != fTitle) {
    const std::string title = std::exchange(fTitle, {});
    SongIs(title);
    return;
  }
  entry_ref ref;
  if (answer.FindRef("refs", &ref) != B_OK) return;
  fPath = ref.FullPath();
  Watch();
  Read();
}

void TSongLyrics::Watch() {
  watch_node(folder_of(fPath).c_str(), B_WATCH_DIRECTORY, fOwner);
  watch_node(fPath.c_str(), B_WATCH_STAT, fOwner); // written in place
}

bool TSongLyrics::FilesChanged(const BMessage& notice) {
  if (fPath.empty()) return false;
  std::string name;
  const bool isInFolder = notice.FindString("name", &name) == B_OK;
  const std::string path = folder_of(fPath) + name;
  if (isInFolder && path != koreva::reext(fPath, "lrc") && path != koreva::reext(fPath, "txt")) return false;
  stop_watching(fOwner); // a new file may have replaced it
  Watch();
  Read();
  return true;
}

void TSongLyrics::Read() {
  const std::string timed = koreva::reext(fPath, "lrc");
  fPath = BEntry(timed.c_str()).Exists() ? timed : koreva::reext(fPath, "txt");
  entry_ref ref;
  std::list<std::string> lines;
  long crType = 0;
  long encoding = 0;
  fLines.clear();
  fHasTooManyLines = false;
  if (get_ref_for_path(fPath.c_str(), &ref) != B_OK) return;
  fHasTooManyLines = has_too_many_lines(ref);
  if (fHasTooManyLines || !load_lyrics(ref, &lines, &crType, &encoding)) return;
  if (!lines.empty() && lines.front().starts_with(kByteOrderMark)) lines.front().erase(0, kByteOrderMark.size());
  fLines.assign(lines.begin(), lines.end());
}
