/** The editor view's ways to open lyrics. */

#include "common/koreva.h"
#include "document/editor_view.h"
#include "hostlink/current_song_finder.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
#include "plugin/pref.h"

#include <string_view>

namespace {

constexpr const char* kTextType = "text/plain";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
/** While a file is being opened the player is left alone. */
constexpr bigtime_t kSlowPollUs = 100000000;

/** Polls slowly for as long as it lives, whatever way the opening ends. */
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

} // namespace

void TVesmoEView::MItemOpenCurLyricsClicked() {
  fSongFinder->Start();
}

void TVesmoEView::CurrentSongAnswered(const BMessage& message) {
  if (message.what == kMsgPlayerSilent) return SetStatBarStr(gLLT->Text("Err_Player_Does_Not_Answer"));
  if (message.what == kMsgNoSong) return tell(gLLT->Text("Err_No_Current_Song"));
  BMessage open(message);
  open.what = B_REFS_RECEIVED;
  Window()->PostMessage(&open);
}

void TVesmoEView::RefsReceived(const BMessage& message) {
  const TSlowPoll slowly(fPoll.get());
  entry_ref ref;
  if (message.FindRef("refs", &ref) != B_OK || ref.IsEmpty()) return;
  if (AsksToForget(message, ref)) return;
  BMessage afterSave(message);
  afterSave.RemoveName(kFromRecentFiles); // by then the keys that are held mean something else
  if (!AskSave(afterSave, this) || !MakeSureItExists(ref)) return;
  const entry_ref source = CopyToOpenInstead(ref).value_or(ref);
  if (has_too_many_lines(source)) return tell(too_many_lines_text(source));
  if (!OpenFile(message, ref, source)) tell(gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + ref.FullPath()));
}

/** A recent file chosen with the Control key held is one to drop from the list. */
bool TVesmoEView::AsksToForget(const BMessage& message, const entry_ref& ref) {
  if (!message.HasField(kFromRecentFiles) || message.IsSourceRemote() || !(modifiers() & B_CONTROL_KEY)) return false;
  if (ask_no_yes(gLLT->Text("Ask_Del_One_MRUF_1") + ref.name + gLLT->Text("Ask_Del_One_MRUF_2")))
    SendRemoveHistoryRqtd(ref);
  return true;
}

bool TVesmoEView::MakeSureItExists(const entry_ref& ref) {
  if (BEntry(&ref).Exists()) return true;
  const std::string question = gLLT->Text("Ask_Create_New_1") + ref.FullPath() + gLLT->Text("Ask_Create_New_2");
  if (!ask_no_yes(question)) {
    SendRemoveHistoryRqtd(ref);
    return false;
  }
  if (CreateNewLyricsFile(ref)) return true;
  tell(gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + ref.FullPath()));
  return false;
}

bool TVesmoEView::CreateNewLyricsFile(const entry_ref& ref) {
  BFile file(&ref, B_READ_WRITE | B_CREATE_FILE);
  if (file.InitCheck() != B_OK) return false;
  BNodeInfo(&file).SetType(kTextType);
  return true;
}

/** Opens the file; `source` has its text, as unsaved changes when it is another file. */
bool TVesmoEView::OpenFile(const BMessage& request, const entry_ref& ref, const entry_ref& source) {
  TLyricsInfo info;
  info.File = ref;
  std::list<std::string> lines;
  bool isWhole = true;
  if (!load_lyrics(source, &lines, &info.CRType, &info.Encoding, &isWhole)) return false;
  if (cvt_enum_ec_to_bconv(info.Encoding) == 0) info.Encoding = 0; // one that nobody knows converts nothing
  off_t size = 0;
  if (BEntry(&source, true).GetSize(&size) == B_OK && size == 0) {
    CreateNewLyrics();
    fInfo.File = ref;
  } else {
    fInfo = info;
    fIsWhole = isWhole;
    fOutside.clear();
    ShowLines(std::move(lines));
    if (source != ref) MarkChanged();
  }
  SendAddHistoryRqtd();
  SetWinTitle();
  ExpDefaultStatBarRqtd();
  TellNotWhole();
  koreva::invoke_next_msg(&request);
  return true;
}

void TVesmoEView::ShowLines(std::list<std::string> lines) {
  if (lines.empty()) lines.emplace_back();
  if (lines.front().starts_with(kByteOrderMark)) lines.front().erase(0, kByteOrderMark.size());
  fActive->SetLines(lines);
  fActive->SetCurLine(0);
  fActive->SetModified(false);
  BeginHistory();
}

bool TVesmoEView::SimpleData(const BMessage& message) {
  if (!message.WasDropped() || !message.IsSourceRemote() || !message.HasField("refs")) return false;
  BMessage open(message);
  open.what = B_REFS_RECEIVED;
  Window()->PostMessage(&open);
  return true;
}

void TVesmoEView::SendAddHistoryRqtd() {
  BMessage request(kMsgAddHistory);
  request.AddRef("refs", &fInfo.File);
  Window()->PostMessage(&request);
}

void TVesmoEView::SendRemoveHistoryRqtd(const entry_ref& ref) {
  BMessage request(kMsgRemoveHistory);
  request.AddRef("refs", &ref);
  Window()->PostMessage(&request);
}
