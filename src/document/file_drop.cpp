#include "document/file_drop.h"

#include "document/edit_session.h"
#include "document/lyrics_opener.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/file_content.h"
#include "lyrics/lyrics_fname.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "platform/support/cut_text.h"

#include <optional>

namespace {

/** More are not looked at: each takes an access to the disk. */
constexpr int32 kMostDropped = 1000;

std::optional<entry_ref> lyrics_beside(const std::string& song) {
  SonivoSongEntry entry;
  std::string path = song;
  entry.filename = path.data();
  entry_ref ref;
  if (get_ref_for_path(lyrics_fname(entry).c_str(), &ref) != B_OK || !BEntry(&ref).Exists()) return {};
  return ref;
}

} // namespace

bool TFileDrop::SimpleData(const BMessage& message) {
  if (!message.WasDropped() || !message.IsSourceRemote() || !message.HasField("refs")) return false;
  FilesDropped(message);
  return true;
}

/** Songs and folders go to the player. The first other file is opened; without one, the first song's lyrics. */
void TFileDrop::FilesDropped(const BMessage& message) {
  std::vector<std::string> songs;
  std::optional<entry_ref> lyrics;
  entry_ref ref;
  for (int32 i = 0; message.FindRef("refs", i, &ref) == B_OK && i < kMostDropped; ++i) {
    const std::string path = ref.FullPath();
    if (BEntry(&ref).IsDirectory() || content_of_file(path) == TFileContent::kSong)
      songs.push_back(path);
    else if (!lyrics)
      lyrics = ref;
  }
  if (songs.empty()) return post_open(fOwner->Window(), message);
  PlayDropped(songs);
  if (!lyrics) lyrics = lyrics_beside(songs.front());
  if (!lyrics) return;
  BMessage open;
  open.AddRef("refs", &*lyrics);
  post_open(fOwner->Window(), open);
}

void TFileDrop::PlayDropped(const std::vector<std::string>& songs) {
  const bool isSent = fFrontEnd->PlayFiles(songs) == B_OK;
  const std::string name = songs.front().substr(songs.front().rfind('/') + 1);
  fSession->Report(isSent ? (gLLT->Text("StatBarStr_Given_To_Player") + std::string(cut_text(name)))
                          : gLLT->Text("Err_Player_Does_Not_Answer"));
}
