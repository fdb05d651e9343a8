#include "document/song_lyrics_opener.h"

#include "common/safety_copy.h"
#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/edit_session.h"
#include "document/lyrics_opener.h"
#include "document/save_commands.h"
#include "hostlink/host_link.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/file_content.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "songtags/song_text.h"

#include <utility>

namespace {

/** What a user who opens the file would be asked about stays closed. */
bool opens_without_question(const entry_ref& ref) {
  const std::string path = ref.FullPath();
  return BEntry(&ref).Exists() && longer_safety_copy(path).empty() && content_of_file(path) == TFileContent::kText &&
         !has_too_many_lines(ref);
}

std::string leaf_of(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

} // namespace

TSongLyricsOpener::TSongLyricsOpener(BView* owner, const TParts& parts)
    : fOwner(owner), fParts(parts), fFinder(parts.frontEnd, BMessenger(owner)), fReader(BMessenger(owner)) {}

bool TSongLyricsOpener::Handle(const BMessage& message) {
  switch (message.what) {
  case kMsgOpenCurrent:
    MItemOpenCurLyricsClicked();
    return true;
  case kMsgSongFound:
  case kMsgNoSong:
  case kMsgPlayerSilent:
    SongSearched(message);
    return true;
  case kMsgSongLyricsRead:
    SongLyricsRead();
    return true;
  case kMsgOpenSongLyrics:
    OpenOffered(message);
    return true;
  default:
    return false;
  }
}

/** What is going on already becomes the user's. */
void TSongLyricsOpener::MItemOpenCurLyricsClicked() {
  fSearchesByItself = false;
  fReadsByItself = false;
  fFinder.Start();
}

void TSongLyricsOpener::SongSearched(const BMessage& answer) {
  const bool isByItself = fSearchesByItself;
  if (answer.what != kMsgPlayerSilent) fSearchesByItself = false; // else the search goes on
  if (answer.what == kMsgSongFound) return SongFound(answer, isByItself);
  if (isByItself) return;
  if (answer.what == kMsgNoSong) return tell(gLLT->Text("Err_No_Current_Song"));
  fParts.session->Report(gLLT->Text("Err_Player_Does_Not_Answer"));
}

void TSongLyricsOpener::SongFound(const BMessage& answer, bool isByItself) {
  entry_ref file;
  std::string song;
  if (answer.FindRef("refs", &file) != B_OK) return;
  fSongFolder = file.directory;
  const bool isSongKnown = answer.FindString("song", &song) == B_OK && !song.empty();
  if (!isSongKnown || BEntry(&file).Exists()) return isByItself ? OfferSongLyrics(file) : OpenFile(file);
  if (!fReader.IsRunning()) {
    fMissingFile = file;
    fReadsByItself = isByItself;
    fReader.Read(song);
  } else if (!isByItself && song != fReader.Song()) {
    fParts.session->Report(gLLT->Text("StatBarStr_Song_Busy"));
  }
}

/** Offers to create it if it is missing. */
void TSongLyricsOpener::OpenFile(const entry_ref& file) {
  BMessage open;
  open.AddRef("refs", &file);
  open.AddBool(kForCurrentSong, true);
  post_open(fOwner->Window(), open);
}

void TSongLyricsOpener::SongLyricsRead() {
  if (!fReader.Finish()) return;
  if (fReadsByItself) return OfferSongLyrics(fMissingFile);
  if (!LyricsInside()) return OpenFile(fMissingFile);
  if (fParts.saving->AskSave(BMessage(kMsgSongLyricsRead), fOwner)) ShowLyricsInside();
}

const TEmbeddedLyrics* TSongLyricsOpener::LyricsInside() const {
  const TEmbeddedLyrics* const lyrics = best_lyrics(fReader.Reading().lyrics);
  return lyrics && !has_too_many_lines(lyrics->text) ? lyrics : nullptr;
}

/** As a document without a file; nothing is lost as long as it is not changed. */
void TSongLyricsOpener::ShowLyricsInside() {
  fParts.loader->ShowWithoutFile(document_lines(LyricsInside()->text));
  fInsideNumber = fParts.document->Number();
  fParts.session->Report(gLLT->Text("StatBarStr_From_Song") + leaf_of(fReader.Song()));
}

bool TSongLyricsOpener::IsDocumentUntouched() const {
  const std::vector<std::string>& lines = fParts.document->Lines();
  const bool isEmpty = lines.empty() || (lines.size() == 1 && lines.front().empty());
  return fParts.document->File().IsEmpty() && isEmpty && fParts.document->History().Steps().empty();
}

bool TSongLyricsOpener::MayOpenByItself() {
  const int32 wanted = gPref->Values()->songOpening;
  if (wanted == kNeverOpen) return false;
  fParts.session->Active().FlushEdits();
  if (fParts.session->Active().IsModified() || fParts.document->IsModified()) return false;
  if (IsDocumentUntouched()) return true;
  if (wanted != kOpenWithEverySong) return false;
  if (fParts.document->File().IsEmpty()) return fParts.document->Number() == fInsideNumber;
  return fParts.file->StateNow() == TDiskState::kUnchanged;
}

void TSongLyricsOpener::Poll(bool isPlaying) {
  const int32 document = fParts.document->Number();
  if (!fOpener.IsDue(fParts.frontEnd->Title(), isPlaying, document, system_time())) return;
  if (MayOpenByItself() && fFinder.Start()) fSearchesByItself = true;
}

/** The window and the manager pass the offer on, unless one of their panels and dialogs is open. */
void TSongLyricsOpener::OfferSongLyrics(const entry_ref& file) {
  BMessage offer(kMsgOfferSongLyrics);
  offer.AddRef("refs", &file);
  offer.AddInt32("Document", fParts.document->Number());
  fOwner->Window()->PostMessage(&offer);
}

void TSongLyricsOpener::OpenOffered(const BMessage& message) {
  entry_ref ref;
  int32 document = 0;
  if (message.FindRef("refs", &ref) != B_OK || message.FindInt32("Document", &document) != B_OK) return;
  const bool isOpen = ref.FullPath() == fParts.document->File().FullPath();
  if (isOpen || document != fParts.document->Number() || !MayOpenByItself()) return;
  const bool isRead = ref == fMissingFile && !fReader.IsRunning() && LyricsInside();
  if (isRead && !BEntry(&ref).Exists()) return ShowLyricsInside();
  if (!opens_without_question(ref)) return;
  std::optional<TOpenedLyrics> opened = open_lyrics(ref, ref, {gPref->Values()->recognisesCommon, {}});
  if (!opened) return;
  fParts.loader->Show(std::move(*opened));
  fParts.session->Report(gLLT->Text("StatBarStr_Opened_For_Song") + ref.name);
}
