/** The answers to the notice that the file was changed. */

#include "document/differences_win.h"
#include "document/edit_session.h"
#include "document/editor_view.h"
#include "document/file_watch.h"
#include "interapp/questions.h"
#include "language/llt.h"
#include "lyrics/line_diff.h"
#include "lyrics/line_limit.h"

namespace {

/** More lines are not read by anyone. */
constexpr int kMostLinesShown = 5000;

} // namespace

/** First on another thread, which waits for a slow disk with a limit; from then on the bytes are in memory. */
std::optional<TOpenedLyrics> TVesmoEView::ReadFileAgain() {
  const entry_ref file = fDocument.File();
  const TDiskState state = fFileWatch->StateNow();
  const bool isThere = state == TDiskState::kUnchanged || state == TDiskState::kChanged;
  std::optional<TOpenedLyrics> opened;
  if (isThere && !has_too_many_lines(file)) opened = open_lyrics(file, file);
  if (!opened) tell(gLLT->Text("Err_Cannot_Load_Lyrics") + ("\n" + file.FullPath()));
  return opened;
}

void TVesmoEView::CompareFileRqtd() {
  fSession->Active().FlushEdits();
  const std::optional<TOpenedLyrics> opened = ReadFileAgain();
  if (!opened) return;
  const std::vector<std::string> theirs(opened->lines.begin(), opened->lines.end());
  const std::string differences = diff_text(theirs, fDocument.Lines(), kMostLinesShown);
  show_differences(&fDifferences, Window(), fDocument.File().name, gLLT->Text("Differences_Legend"), differences);
}

void TVesmoEView::ReloadFileRqtd() {
  const std::optional<TOpenedLyrics> opened = ReadFileAgain();
  if (!opened) return;
  fSession->Reload(*opened);
  fFileWatch->Follow();
  SetStatBarStr(gLLT->Text("StatBarStr_Reloaded"));
}
