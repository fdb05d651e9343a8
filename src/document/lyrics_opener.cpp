#include "document/lyrics_opener.h"

#include "common/koreva.h"
#include "common/safety_copy.h"
#include "document/document_loader.h"
#include "document/edit_session.h"
#include "document/form_offers.h"
#include "document/save_commands.h"
#include "hostlink/host_link.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/document.h"
#include "lyrics/file_content.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/app/message_runner.h"
#include "platform/interface/view.h"
#include "platform/interface/window.h"
#include "platform/kernel/modifiers.h"
#include "platform/storage/entry.h"
#include "platform/storage/file.h"
#include "platform/storage/node_info.h"
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

void post_open(BWindow* window, const BMessage& message) {
  BMessage open(message);
  open.what = B_REFS_RECEIVED;
  window->PostMessage(&open);
}

bool TLyricsOpener::Handle(const BMessage& message) {
  switch (message.what) {
  case B_REFS_RECEIVED:
    RefsReceived(message);
    return true;
  case kMsgReopenAs:
    ReopenRqtd(message);
    return true;
  default:
    return false;
  }
}

void TLyricsOpener::RefsReceived(const BMessage& message) {
  const TSlowPoll slowly(fParts.poll);
  entry_ref ref;
  if (message.FindRef("refs", &ref) != B_OK || ref.IsEmpty()) return;
  if (is_removal(message)) {
    if (ask_no_yes(gLLT->Text("Ask_Del_One_MRUF_1") + ref.name + gLLT->Text("Ask_Del_One_MRUF_2")))
      SendRemoveHistoryRqtd(ref);
    return;
  }
  BMessage afterSave(message);
  afterSave.RemoveName(kFromRecentFiles); // keys held by then have no meaning for it
  if (!fParts.saving->AskSave(afterSave, fOwner) || !EnsureExists(&ref, message.HasField(kForCurrentSong))) return;
  if (!IsTextOrWanted(ref)) return;
  const entry_ref source = copy_to_open_instead(ref).value_or(ref);
  if (has_too_many_lines(source)) return tell(too_many_lines_text(source));
  std::optional<TOpenedLyrics> opened = open_lyrics(ref, source, {gPref->Values()->recognisesCommon, {}});
  if (!opened) return tell(cannot_load_text(ref));
  fParts.loader->Show(std::move(*opened));
  koreva::invoke_next_msg(&message);
}

void TLyricsOpener::ReopenRqtd(const BMessage& message) {
  int32 number = 0;
  const entry_ref file = fParts.document->File();
  if (message.FindInt32("Encoding", &number) != B_OK) return;
  if (file.IsEmpty()) return fParts.session->Report(gLLT->Text("StatBarStr_No_File_To_Reopen"));
  if (!fParts.saving->AskSave(message, fOwner)) return;
  std::optional<TOpenedLyrics> opened;
  if (!has_too_many_lines(file))
    opened = open_lyrics(file, file, {gPref->Values()->recognisesCommon, any_encoding_of(number)});
  if (!opened) return tell(cannot_load_text(file));
  fParts.loader->Show(std::move(*opened));
  fParts.offers->WithdrawEncoding(); // the user has chosen
}

bool TLyricsOpener::EnsureExists(entry_ref* ref, bool isForSong) {
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
bool TLyricsOpener::IsTextOrWanted(const entry_ref& ref) {
  const std::string path = ref.FullPath();
  const TFileContent content = content_of_file(path);
  if (content == TFileContent::kText) return true;
  const bool isSong = content == TFileContent::kSong;
  const std::string question =
      gLLT->Text(isSong ? "Ask_No_Text_Song" : "Ask_No_Text") + path + "\n\n" + gLLT->Text("Hint_No_Text");
  const auto open = text_button("Button_Open_Anyway", 'O');
  const long answer = isSong ? ask(question, {cancel_button(), open, text_button("Button_Play", 'P')})
                             : ask(question, {cancel_button(true), open});
  if (answer == 2) fParts.frontEnd->PlayFile(path);
  return answer == 1;
}

bool TLyricsOpener::CreateNewLyricsFile(const entry_ref& ref) {
  BFile file(&ref, B_READ_WRITE | B_CREATE_FILE);
  if (file.InitCheck() != B_OK) return false;
  BNodeInfo(&file).SetType(kTextType);
  return true;
}

void TLyricsOpener::SendRemoveHistoryRqtd(const entry_ref& ref) {
  BMessage request(kMsgRemoveHistory);
  request.AddRef("refs", &ref);
  fOwner->Window()->PostMessage(&request);
}
