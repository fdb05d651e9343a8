/** Opening the lyrics of the playing song without a command. */

#include "common/safety_copy.h"
#include "document/document_file.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "hostlink/current_song_finder.h"
#include "hostlink/host_link.h"
#include "language/llt.h"
#include "lyrics/file_content.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "platform/storage/entry.h"
#include "plugin/file_choices.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <utility>

namespace {

/** What a user who opens the file would be asked about stays closed. */
bool opens_without_question(const entry_ref& ref) {
  const std::string path = ref.FullPath();
  return BEntry(&ref).Exists() && longer_safety_copy(path).empty() && content_of_file(path) == TFileContent::kText &&
         !has_too_many_lines(ref);
}

} // namespace

bool TVesmoEView::IsDocumentUntouched() const {
  const std::vector<std::string>& lines = fDocument.Lines();
  const bool isEmpty = lines.empty() || (lines.size() == 1 && lines.front().empty());
  return fDocument.File().IsEmpty() && isEmpty && fDocument.History().Steps().empty();
}

bool TVesmoEView::MayOpenByItself() {
  const int32 wanted = gPref->Values()->songOpening;
  if (wanted == kNeverOpen) return false;
  fSession->Active().FlushEdits();
  if (fSession->Active().IsModified() || fDocument.IsModified()) return false;
  if (IsDocumentUntouched()) return true;
  return wanted == kOpenWithEverySong && !fDocument.File().IsEmpty() && fFile->StateNow() == TDiskState::kUnchanged;
}

void TVesmoEView::OpenSongLyricsIfDue(bool isPlaying) {
  if (!fSongOpener.IsDue(fFrontEnd->Title(), isPlaying, fDocument.Number(), system_time())) return;
  if (MayOpenByItself() && fSongFinder->Start()) fSearchesByItself = true;
}

/** The window and the manager pass the offer on, unless one of their panels and dialogs is open. */
void TVesmoEView::OfferSongLyrics(const BMessage& found) {
  BMessage offer(found);
  offer.what = kMsgOfferSongLyrics;
  offer.AddInt32("Document", fDocument.Number());
  Window()->PostMessage(&offer);
}

void TVesmoEView::OpenSongLyrics(const BMessage& message) {
  entry_ref ref;
  int32 document = 0;
  if (message.FindRef("refs", &ref) != B_OK || message.FindInt32("Document", &document) != B_OK) return;
  if (ref.FullPath() == fDocument.File().FullPath() || document != fDocument.Number() || !MayOpenByItself() ||
      !opens_without_question(ref))
    return;
  const std::optional<TOpenedLyrics> opened = open_lyrics(ref, ref, {load_file_choices().recognisesCommon, {}});
  if (!opened) return;
  ShowOpened(*opened);
  SetStatBarStr((gLLT->Text("StatBarStr_Opened_For_Song") + ref.name).c_str());
}
