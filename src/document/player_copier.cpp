#include "document/player_copier.h"

#include "common/atomic_replace.h"
#include "common/koreva.h"
#include "common/safety_copy.h"
#include "document/edit_session.h"
#include "document/notice.h"
#include "document/player_copies.h"
#include "hostlink/current_song_finder.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "lyrics/export.h"
#include "platform/app/looper.h"
#include "platform/app/message.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/storage/entry.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"
#include "plugin/shared_prefs.h"

#include <filesystem>

namespace {

constexpr int32 kRenewNotice = kOtherNotices + 21;
constexpr int32 kChangedCopyNotice = kOtherNotices + 22;

entry_ref with_extension(const entry_ref& file, const char* extension) {
  return {file.directory, koreva::reext(file.name, extension)};
}

/** Also when a link makes it a different name. */
bool is_same_file(const entry_ref& a, const entry_ref& b) {
  std::error_code error;
  return a == b || std::filesystem::equivalent(a.FullPath(), b.FullPath(), error);
}

} // namespace

TPlayerCopier::TPlayerCopier(BView* view, Sonivo_FrontEnd* frontEnd, TEditSession* session, const TDocument* document,
                             TNoticeBoard* notices)
    : BHandler("PlayerCopier"), fView(view), fSession(session), fDocument(document), fNotices(notices) {
  view->Window()->AddHandler(this);
  fFinder = std::make_unique<TCurrentSongFinder>(frontEnd, BMessenger(this));
}

TPlayerCopier::~TPlayerCopier() = default;

void TPlayerCopier::MessageReceived(BMessage* message) {
  entry_ref songLyrics;
  switch (message->what) {
  case kMsgSongFound:
    return Copy(message->FindRef("refs", &songLyrics) == B_OK ? songLyrics : entry_ref());
  case kMsgNoSong:
    return Copy({});
  case kMsgPlayerSilent:
    return fSession->Report(gLLT->Text("Err_Player_Does_Not_Answer"));
  case kMsgRenewCopies:
    return RenewRqtd();
  default:
    BHandler::MessageReceived(message);
  }
}

void TPlayerCopier::Start() {
  fFinder->Start();
}

/** Next to the song, unless that has lyrics of its own which are not the document's; else next to the lyrics. */
entry_ref TPlayerCopier::Target(const entry_ref& songLyrics) const {
  const entry_ref& file = fDocument->File();
  const entry_ref besideSong = songLyrics.IsEmpty() ? entry_ref() : with_extension(songLyrics, "lrc");
  if (file.IsEmpty() || songLyrics.IsEmpty()) return file.IsEmpty() ? besideSong : with_extension(file, "lrc");
  const auto own = TPlayerCopies::Stored().Of(file.FullPath());
  const bool isFree = !BEntry(&songLyrics).Exists();
  const bool isDocuments = is_same_file(songLyrics, file) || (own && own->path == songLyrics.FullPath());
  return isFree || isDocuments ? besideSong : with_extension(file, "lrc");
}

void TPlayerCopier::Copy(const entry_ref& songLyrics) {
  fSession->Active().FlushEdits();
  const entry_ref target = Target(songLyrics);
  if (target.IsEmpty()) return tell(gLLT->Text("Err_Copy_Without_Name"));
  if (!fDocument->File().IsEmpty() && is_same_file(target, fDocument->File())) return OfferToSaveAsCommon();
  const std::optional<TExported> copy = export_lyrics(fDocument->CopyLines(), TExportFormat::kDotted);
  if (!copy) return tell(gLLT->Text("Err_No_Tags_To_Export"));
  if (!MayReplace(target)) return;
  const std::string path = target.FullPath();
  if (!Write(path, copy->bytes)) return tell(gLLT->Text("Err_Cannot_Export") + ("\n" + path));
  fUnsavedCopy = fDocument->File().IsEmpty() ? path : std::string();
  fUnsavedNumber = fDocument->Number();
  fSession->Report(gLLT->Text("StatBarStr_Copied_For_Players") + path);
  if (!gPref->Values()->renewsCopies) OfferToRenew(target.name);
}

/** The document has the very name that other players look for. */
void TPlayerCopier::OfferToSaveAsCommon() {
  const TLyricsInfo info = fDocument->Info();
  if (fDocument->Form().dialect == TDialect::kCommon)
    return fSession->Report(info.File.name + gLLT->Text("StatBarStr_Is_For_Players"));
  if (!ask_no_yes("\"" + info.File.name + "\"" + gLLT->Text("Ask_Save_As_Common"))) return;
  BMessage save(B_SAVE_REQUESTED);
  entry_ref folder;
  get_ref_for_path(info.File.directory.c_str(), &folder);
  save.AddRef("directory", &folder);
  save.AddString("name", info.File.name);
  save.AddInt32("Document", fDocument->Number());
  save.AddInt32("Dialect", static_cast<int32>(TDialect::kCommon));
  fView->MessageReceived(&save);
}

/** A file of another origin is replaced only after a question, and backed up. */
bool TPlayerCopier::MayReplace(const entry_ref& target) const {
  const std::string path = target.FullPath();
  const TFileLook look = look_at_file(path, kMaxLyricsFileSize);
  if (look.kind == TFileKind::kMissing) return true;
  if (look.state && TPlayerCopies::Stored().IsCopy(path, *look.state)) return true;
  if (!look.state) {
    tell(gLLT->Text("Err_Cannot_Export") + ("\n" + path));
    return false;
  }
  const std::string question = gLLT->Text("Ask_Replace_Foreign_1") + path + gLLT->Text("Ask_Replace_Foreign_2");
  if (ask(question, {cancel_button(true), text_button("Button_Replace", 'R')}) != 1) return false;
  if (!keep_file_for_recovery(path).empty()) return true;
  tell(gLLT->Text("Err_Cannot_Save_Lyrics") + ("\n" + path) + "\n\n" + gLLT->Text("Err_Version_Not_Kept"));
  return false;
}

bool TPlayerCopier::Write(const std::string& path, const std::string& bytes) {
  if (atomic_replace(path, bytes) != B_OK || !file_holds(path, bytes)) return false;
  TPlayerCopies copies = TPlayerCopies::Stored();
  copies.Add({path, fDocument->File().FullPath(), static_cast<int64>(bytes.size()), digest_of(bytes)});
  copies.Store(); // if that fails, the next copy asks
  return true;
}

void TPlayerCopier::OfferToRenew(const std::string& name) {
  fOffered = name;
  fNotices->ShowNotice({kRenewNotice,
                        name + gLLT->Text("Notice_Copy_Saved"),
                        {{gLLT->Text("Button_Always_Renew"), BMessage(kMsgRenewCopies)}},
                        BMessenger(this),
                        BMessage()});
}

void TPlayerCopier::RenewRqtd() {
  fNotices->RemoveNotice(kRenewNotice);
  BMessage change(kMsgOptions);
  change.AddBool("RnwC", true);
  gPref->UnarchiveOptions(change);
  const bool isStored = store_shared_prefs({change}, *gPref->Values());
  change.what = kMsgOptionsChosen;
  fView->Window()->PostMessage(&change);
  fSession->Report(gLLT->Text(isStored ? "StatBarStr_Copies_Renewed" : "Pref_Err_Store"));
}

std::string TPlayerCopier::Renew() {
  fNotices->RemoveNotice(kChangedCopyNotice);
  if (!gPref->Values()->renewsCopies) return {};
  TPlayerCopies copies = TPlayerCopies::Stored();
  const auto copy = copies.Of(fDocument->File().FullPath());
  const bool wasUnsaved = fUnsavedNumber == fDocument->Number();
  const std::string path = copy ? copy->path : wasUnsaved ? fUnsavedCopy : std::string();
  if (path.empty()) return {};
  const TFileLook look = look_at_file(path, kMaxLyricsFileSize);
  const auto exported = export_lyrics(fDocument->CopyLines(), TExportFormat::kDotted);
  if (look.kind == TFileKind::kMissing || !exported) return {};
  const std::string name = std::filesystem::path(path).filename();
  if (!look.state || !copies.IsCopy(path, *look.state) || !Write(path, exported->bytes)) {
    fNotices->ShowNotice(
        {kChangedCopyNotice, name + gLLT->Text("Notice_Copy_Not_Renewed"), {}, BMessenger(this), BMessage()});
    return {};
  }
  return gLLT->Text("StatBarStr_And_Copy") + name;
}

void TPlayerCopier::LanguageChanged() {
  if (fNotices->HasNotice(kRenewNotice)) OfferToRenew(fOffered);
  fNotices->RemoveNotice(kChangedCopyNotice);
}
