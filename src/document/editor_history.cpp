/** The editor view's history of the document, over both edit views. */

#include "document/document_teller.h"
#include "document/editor_view.h"
#include "editviews/tag_input_view.h"
#include "language/llt.h"
#include "platform/app/message.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"

#include <algorithm>

namespace {
/** A user who goes on typing while a step is undone wins; but not for ever. */
constexpr int kMaxTries = 100;
} // namespace

void TVesmoEView::BeginHistory() {
  std::list<std::string> lines;
  fActive->GetLines(&lines);
  fHistory.Reset(lines);
  BelongsToSongNow();
  fTeller->DocumentChanged();
  TellHistory();
}

void TVesmoEView::MarkSaved() {
  fActive->SetModified(false);
  fHistory.MarkSaved();
}

/** Other than the file, though no step changed it. */
void TVesmoEView::MarkChanged() {
  fActive->SetModified(true);
  fHistory.MarkUnsaved();
}

void TVesmoEView::LinesEdited(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter) {
  if (kind == TEditKind::kStamp) LookAtSong();
  fHistory.Record(change, kind, lineBefore, lineAfter, system_time());
  fTeller->LinesChanged(change);
  // A change that no key was seen of, as by the mouse.
  if (!fHistory.IsSaved()) fActive->SetModified(true);
  TellHistory();
}

void TVesmoEView::RecordWholeText(const std::list<std::string>& lines, int32 line) {
  const auto count = static_cast<int32>(fHistory.Lines().size());
  fHistory.Record({0, count, lines}, TEditKind::kOther, line, line, system_time());
  fTeller->DocumentChanged();
  TellHistory();
}

bool TVesmoEView::Replay(std::optional<TReplay> (TEditHistory::*next)() const, void (TEditHistory::*done)()) {
  for (int i = 0; i < kMaxTries; ++i) {
    fActive->FlushEdits();
    const auto replay = (fHistory.*next)();
    if (!replay) return false;
    if (!fActive->Replay(*replay)) continue;
    (fHistory.*done)();
    fTeller->LinesChanged(replay->change);
    fActive->SetModified(!fHistory.IsSaved());
    TellHistory();
    return true;
  }
  return false;
}

void TVesmoEView::UndoRqtd() {
  const bool isDone = Replay(&TEditHistory::NextUndo, &TEditHistory::Undo);
  SetStatBarStr(gLLT->Text(isDone ? "StatBarStr_Undone" : "StatBarStr_Nothing_To_Undo"));
}

void TVesmoEView::RedoRqtd() {
  const bool isDone = Replay(&TEditHistory::NextRedo, &TEditHistory::Redo);
  SetStatBarStr(gLLT->Text(isDone ? "StatBarStr_Redone" : "StatBarStr_Nothing_To_Redo"));
}

void TVesmoEView::TellHistory() {
  const bool canUndo = fHistory.CanUndo();
  const bool canRedo = fHistory.CanRedo();
  if (canUndo == fCanUndo && canRedo == fCanRedo) return;
  fCanUndo = canUndo;
  fCanRedo = canRedo;
  BMessage changed(kMsgHistoryChanged);
  changed.AddBool("CanUndo", canUndo);
  changed.AddBool("CanRedo", canRedo);
  if (Window()) Window()->PostMessage(&changed);
}
