#include "document/document_file.h"

#include "document/differences_win.h"
#include "document/edit_session.h"
#include "document/form_offers.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/line_limit.h"
#include "platform/app/message.h"
#include "plugin/message_codes.h"
#include "plugin/pref.h"

namespace {

/** In the encoding that the user has chosen, if it is one that is not detected. */
TReadChoice choice_for(const TDocument& document) {
  const TEncoding encoding = document.Form().encoding;
  return {gPref->Values()->recognisesCommon, is_foreign(encoding) ? std::optional(encoding) : std::nullopt};
}

} // namespace

TDocumentFile::TDocumentFile(const BHandler* owner, TDocument* document, TEditSession* session, TNoticeBoard* notices,
                             TDifferences* differences, TFormOffers* offers)
    : fDocument(document), fSession(session), fDifferences(differences), fOffers(offers),
      fWatch(owner, document, notices), fSaveGuard(document, &fWatch) {}

bool TDocumentFile::Handle(const BMessage& message) {
  switch (message.what) {
  case B_NODE_MONITOR:
    fWatch.FolderChanged(message);
    return true;
  case kMsgLookAtFile:
    fWatch.CheckNow();
    return true;
  case kMsgFileLooked:
    fWatch.Looked();
    return true;
  case kMsgFileLate:
    fWatch.Late();
    return true;
  case kMsgCompareFile:
    Compare();
    return true;
  case kMsgReloadFile:
    Reload();
    return true;
  case kMsgKeepMine:
    fWatch.KeepMine();
    return true;
  default:
    return false;
  }
}

/** First on another thread, which waits for a slow disk with a limit; from then on the bytes are in memory. */
std::optional<TOpenedLyrics> TDocumentFile::ReadAgain() {
  const entry_ref file = fDocument->File();
  const TDiskState state = fWatch.StateNow();
  const bool isThere = state == TDiskState::kUnchanged || state == TDiskState::kChanged;
  std::optional<TOpenedLyrics> opened;
  if (isThere && !has_too_many_lines(file)) opened = open_lyrics(file, file, choice_for(*fDocument));
  if (!opened) tell(gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + file.FullPath()));
  return opened;
}

void TDocumentFile::Compare() {
  fSession->Active().FlushEdits();
  const std::optional<TOpenedLyrics> opened = ReadAgain();
  if (!opened) return;
  const std::vector<std::string> theirs(opened->lines.begin(), opened->lines.end());
  fDifferences->Show(fDocument->File().name, "Differences_Legend", theirs, fDocument->Lines());
}

void TDocumentFile::Reload() {
  const std::optional<TOpenedLyrics> opened = ReadAgain();
  if (!opened) return;
  fSession->Reload(*opened);
  fOffers->CheckTags(opened->hasMixedTags);
  fWatch.Follow();
  fSession->Report(gLLT->Text("StatBarStr_Reloaded"));
}
