/** Opening lyrics. */

#include "common/koreva.h"
#include "common/safety_copy.h"
#include "document/document_file.h"
#include "document/document_recovery.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "hostlink/current_song_finder.h"
#include "hostlink/host_link.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/file_content.h"
#include "lyrics/line_limit.h"
#include "lyrics/lyrics_fname.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "platform/support/cut_text.h"
#include "plugin/file_choices.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <optional>
#include <utility>

namespace {

constexpr const char* kTextType = "text/plain";
/** Effectively no polling of the player while a file is opened. */
constexpr bigtime_t kSlowPollUs = 100000000;

/** Slows polling down during its lifetime. */
class TSlowPoll {
public:
  explicit TSlowPoll(BMessageRunner* poll) : fPoll(poll) {
    if (fPoll) fPoll->SetInterval(kSlowPollUs);
  }
  TSlowPoll(const TSlowPoll&) = delete;
  TSlowPoll& operator=(const TSlowPoll&) = delete;
  ~TSlowPoll() {
    if (fPoll) fPoll->SetInterval(gPref->Values()->pollIntervalUs);
  }

private:
  BMessageRunner* fPoll;
};

std::string too_many_lines_text(const entry_ref& ref) {
  return gLLT->Text("Err_Too_Many_Lines") + ("\n" + ref.FullPath()) + "\n\n" + gLLT->Text("Hint_Most_Lines_1") +
         std::to_string(kMostLines) + gLLT->Text("Hint_Most_Lines_2") + std::to_string(kMostLinesMB) +
         gLLT->Text("Hint_Most_Lines_3");
}

/** The safety copy of a save in place that was interrupted, if the user wants it. It is longer than the file. */
std::optional<entry_ref> copy_to_open_instead(const entry_ref& ref) {
  const std::string copy = longer_safety_copy(ref.FullPath());
  entry_ref found;
  if (copy.empty() || get_ref_for_path(copy.c_str(), &found) != B_OK) return {};
  const std::string question = gLLT->Text("Ask_Open_Copy_1") + copy + gLLT->Text("Ask_Open_Copy_2");
  return ask_no_yes(question) ? std::optional(found) : std::nullopt;
}

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

std::string cannot_load_text(const entry_ref& ref) {
  return gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + ref.FullPath());
}

enum TCreation : long { kCreateNone, kCreate, kCreateLrc };

/** The answers No and Yes; for the current song, whose user may be pressing the space bar, a third one. */
TCreation ask_to_create(const entry_ref& ref, bool isForSong) {
  const std::string question = gLLT->Text("Ask_Create_New_1") + ref.FullPath() + gLLT->Text("Ask_Create_New_2");
  if (!isForSong) return ask_no_yes(question) ? kCreate : kCreateNone;
  koreva::TAlertButton no = text_button("Button_No", 'N', true);
  koreva::TAlertButton yes = text_button("Button_Yes", 'Y');
  no.ignoresSpace = true;
  yes.isDefault = true;
  return static_cast<TCreation>(ask(question, {no, yes, text_button("Button_Create_Lrc", 'L')}));
}

/** A recent file chosen with the Control key held is to be removed from the list. */
bool is_removal(const BMessage& message) {
  return message.HasField(kFromRecentFiles) && !message.IsSourceRemote() && (modifiers() & B_CONTROL_KEY);
}

} // namespace

void TVesmoEView::MItemOpenCurLyricsClicked() {
  fSearchesByItself = false; // a search that is running already becomes the user's
  fSongFinder->Start();
}

void TVesmoEView::SongSearched(const BMessage& answer) {
  const bool isByItself = fSearchesByItself;
  if (answer.what != kMsgPlayerSilent) fSearchesByItself = false; // else the search goes on
  entry_ref lyrics;
  if (answer.FindRef("refs", &lyrics) == B_OK) fSongFolder = lyrics.directory;
  if (isByItself) {
    if (answer.what == kMsgSongFound) OfferSongLyrics(answer);
    return;
  }
  if (TakeSong(answer)) return;
  if (answer.what == kMsgSongFound) {
    BMessage open(answer);
    open.AddBool(kForCurrentSong, true);
    return PostOpen(open);
  }
  if (answer.what == kMsgNoSong) return tell(gLLT->Text("Err_No_Current_Song"));
  SetStatBarStr(gLLT->Text("Err_Player_Does_Not_Answer"));
}

void TVesmoEView::RefsReceived(const BMessage& message) {
  const TSlowPoll slowly(fPoll.get());
  entry_ref ref;
  if (message.FindRef("refs", &ref) != B_OK || ref.IsEmpty()) return;
  if (is_removal(message)) {
    if (ask_no_yes(gLLT->Text("Ask_Del_One_MRUF_1") + ref.name + gLLT->Text("Ask_Del_One_MRUF_2")))
      SendRemoveHistoryRqtd(ref);
    return;
  }
  BMessage afterSave(message);
  afterSave.RemoveName(kFromRecentFiles); // keys held by then have no meaning for it
  if (!AskSave(afterSave, this) || !EnsureExists(&ref, message.HasField(kForCurrentSong))) return;
  if (!IsTextOrWanted(ref)) return;
  const entry_ref source = copy_to_open_instead(ref).value_or(ref);
  if (has_too_many_lines(source)) return tell(too_many_lines_text(source));
  std::optional<TOpenedLyrics> opened = open_lyrics(ref, source, {load_file_choices().recognisesCommon, {}});
  if (!opened) return tell(cannot_load_text(ref));
  ShowOpened(*opened);
  koreva::invoke_next_msg(&message);
}

bool TVesmoEView::EnsureExists(entry_ref* ref, bool isForSong) {
  if (BEntry(ref).Exists()) return true;
  const TCreation creation = ask_to_create(*ref, isForSong);
  if (creation == kCreateNone) {
    SendRemoveHistoryRqtd(*ref);
    return false;
  }
  if (creation == kCreateLrc) ref->name = koreva::reext(ref->name, "lrc");
  if (CreateNewLyricsFile(*ref)) return true;
  tell(cannot_load_text(*ref));
  return false;
}

/** A song or picture would be destroyed by saving it as lyrics. */
bool TVesmoEView::IsTextOrWanted(const entry_ref& ref) {
  const std::string path = ref.FullPath();
  const TFileContent content = content_of_file(path);
  if (content == TFileContent::kText) return true;
  const bool isSong = content == TFileContent::kSong;
  const std::string question =
      gLLT->Text(isSong ? "Ask_No_Text_Song" : "Ask_No_Text") + path + "\n\n" + gLLT->Text("Hint_No_Text");
  const auto open = text_button("Button_Open_Anyway", 'O');
  const long answer = isSong ? ask(question, {cancel_button(), open, text_button("Button_Play", 'P')})
                             : ask(question, {cancel_button(true), open});
  if (answer == 2) fFrontEnd->PlayFile(path);
  return answer == 1;
}

bool TVesmoEView::CreateNewLyricsFile(const entry_ref& ref) {
  BFile file(&ref, B_READ_WRITE | B_CREATE_FILE);
  if (file.InitCheck() != B_OK) return false;
  BNodeInfo(&file).SetType(kTextType);
  return true;
}

void TVesmoEView::ShowOpened(const TOpenedLyrics& opened) {
  if (opened.isEmptyFile) {
    CreateNewLyrics();
    fDocument.BindToFile(opened.file, opened.state);
  } else {
    fSession->Show(opened.lines);
    fDocument.Open(opened);
    fSession->DocumentStarted();
    opened.hasMixedTags ? OfferToUnifyTags() : WithdrawUnifyOffer();
    OfferEncoding();
  }
  fFile->Follow();
  SendAddHistoryRqtd();
  fRecovery->DocumentOpened();
  SetWinTitle();
  ExpDefaultStatBarRqtd();
  if (!fDocument.Unread().IsTextWhole())
    notify(gLLT->Text("Err_Not_Whole") + ("\n" + fDocument.File().FullPath()) + "\n\n" + gLLT->Text("Hint_Not_Whole"));
}

/** Opens the message's files by way of the window. */
void TVesmoEView::PostOpen(const BMessage& message) {
  BMessage open(message);
  open.what = B_REFS_RECEIVED;
  Window()->PostMessage(&open);
}

bool TVesmoEView::SimpleData(const BMessage& message) {
  if (!message.WasDropped() || !message.IsSourceRemote() || !message.HasField("refs")) return false;
  FilesDropped(message);
  return true;
}

/** Songs and folders go to the player. The first other file is opened; without one, the first song's lyrics. */
void TVesmoEView::FilesDropped(const BMessage& message) {
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
  if (songs.empty()) return PostOpen(message);
  PlayDropped(songs);
  if (!lyrics) lyrics = lyrics_beside(songs.front());
  if (!lyrics) return;
  BMessage open;
  open.AddRef("refs", &*lyrics);
  PostOpen(open);
}

void TVesmoEView::PlayDropped(const std::vector<std::string>& songs) {
  const bool isSent = fFrontEnd->PlayFiles(songs) == B_OK;
  const std::string name = songs.front().substr(songs.front().rfind('/') + 1);
  SetStatBarStr(isSent ? (gLLT->Text("StatBarStr_Given_To_Player") + std::string(cut_text(name))).c_str()
                       : gLLT->Text("Err_Player_Does_Not_Answer"));
}

void TVesmoEView::SendAddHistoryRqtd() {
  BMessage request(kMsgAddHistory);
  request.AddRef("refs", &fDocument.File());
  Window()->PostMessage(&request);
}

void TVesmoEView::SendRemoveHistoryRqtd(const entry_ref& ref) {
  BMessage request(kMsgRemoveHistory);
  request.AddRef("refs", &ref);
  Window()->PostMessage(&request);
}
