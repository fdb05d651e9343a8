/** Encodings beyond the three that are detected (lyrics/foreign_encoding.h). */

#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/encoding_name.h"
#include "document/notice.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/foreign_encoding.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "platform/storage/file.h"
#include "plugin/file_choices.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

#include <algorithm>

namespace {

constexpr int32 kEncodingNotice = kOtherNotices + 23;
/** What the detection looks at. */
constexpr size_t kStartSize = size_t{256} << 10;

std::string start_of(const entry_ref& ref) {
  BFile file(&ref, B_READ_ONLY);
  std::string bytes(kStartSize, '\0');
  const ssize_t count = file.InitCheck() == B_OK && file.IsRegular() ? file.Read(bytes.data(), bytes.size()) : 0;
  bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
  return bytes;
}

/** Full-width kana, as nearly every text has that really is Japanese. */
bool has_kana(const std::vector<std::string>& lines) {
  return std::ranges::any_of(lines, [](const std::string& line) {
    for (size_t at = line.find('\xE3'); at != std::string::npos; at = line.find('\xE3', at + 1))
      if (at + 1 < line.size() && line[at + 1] >= '\x81' && line[at + 1] <= '\x83') return true;
    return false;
  });
}

} // namespace

/** Shift-JIS is what a file that is neither UTF-8 nor JIS is detected as; that may be wrong. */
void TVesmoEView::OfferEncoding() {
  WithdrawEncodingOffer();
  const bool isDetected = gPref->Values()->readEncoding == kDetectEncoding;
  if (fDocument.Form().encoding != TEncoding::kShiftJis || !isDetected) return;
  if (!fDocument.Unread().hasBrokenBytes && has_kana(fDocument.Lines())) return;
  const std::optional<TEncoding> probable = probable_foreign_encoding(start_of(fDocument.File()));
  if (!probable) return;
  const std::string name = encoding_name(*probable);
  BMessage reopen(kMsgReopenAs);
  reopen.AddInt32("Encoding", static_cast<int32>(*probable));
  fNotices->ShowNotice({kEncodingNotice,
                        gLLT->Text("Notice_Encoding_1") + name + gLLT->Text("Notice_Encoding_2"),
                        {{gLLT->Text("Button_Open_As") + name, reopen}},
                        BMessenger(this),
                        BMessage()});
}

void TVesmoEView::WithdrawEncodingOffer() {
  fNotices->RemoveNotice(kEncodingNotice);
}

void TVesmoEView::ReopenRqtd(const BMessage& message) {
  int32 number = 0;
  const entry_ref file = fDocument.File();
  if (message.FindInt32("Encoding", &number) != B_OK) return;
  if (file.IsEmpty()) return SetStatBarStr(gLLT->Text("StatBarStr_No_File_To_Reopen"));
  if (!AskSave(message, this)) return;
  std::optional<TOpenedLyrics> opened;
  if (!has_too_many_lines(file))
    opened = open_lyrics(file, file, {load_file_choices().recognisesCommon, any_encoding_of(number)});
  if (!opened) return tell(gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + file.FullPath()));
  ShowOpened(*opened);
  WithdrawEncodingOffer(); // the user has chosen
}
