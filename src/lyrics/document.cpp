#include "lyrics/document.h"

#include "lyrics/exact_lyrics.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace

std::optional<TOpenedLyrics> open_lyrics(const entry_ref& file, const entry_ref& source) {
  TOpenedLyrics opened;
  TReadReport report;
  long crType = 0;
  long encoding = 0;
  if (!load_lyrics(source, &opened.lines, &crType, &encoding, &report)) return {};
  opened.file = file;
  opened.form = {encoding_of(encoding), line_end_of(crType)};
  opened.isWhole = report.isWhole;
  opened.isEmptyFile = report.state.size == 0;
  opened.isRecovered = source != file;
  opened.state = opened.isRecovered ? file_state(file.FullPath(), kMaxLyricsFileSize) : report.state;
  if (opened.lines.empty()) opened.lines.emplace_back();
  std::string& first = opened.lines.front();
  if (first.starts_with(kByteOrderMark)) first.erase(0, kByteOrderMark.size());
  return opened;
}

void TDocument::Begin(const std::list<std::string>& lines, const TLyricsForm& form) {
  fHistory.Reset(lines);
  fForm = form;
  fFile = {};
  fState.reset();
  fIsWhole = true;
  fLostCharacters.clear();
}

void TDocument::StartNew(const TLyricsForm& form) {
  Begin({std::string()}, form);
  NotifyReplaced();
}

void TDocument::BindToFile(const entry_ref& file, const std::optional<TFileState>& state) {
  fFile = file;
  fState = state;
  NotifyReplaced();
}

void TDocument::Open(const TOpenedLyrics& opened) {
  Begin(opened.lines, opened.form);
  fIsWhole = opened.isWhole;
  if (opened.isRecovered) fHistory.MarkUnsaved();
  BindToFile(opened.file, opened.state);
}

TLyricsInfo TDocument::Info() const {
  return {static_cast<long>(fForm.lineEnd), static_cast<long>(fForm.encoding), fFile};
}

bool TDocument::Change(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter, bigtime_t nowUs) {
  if (!fHistory.Record(change, kind, lineBefore, lineAfter, nowUs)) return false;
  if (fObserver) fObserver->LinesChanged(change);
  return true;
}

void TDocument::Rewrite(const std::list<std::string>& lines, int32 line, bigtime_t nowUs) {
  fHistory.Record({0, static_cast<int32>(Lines().size()), lines}, TEditKind::kOther, line, line, nowUs);
  NotifyReplaced();
}

void TDocument::Replay(TReplayDirection direction, const TReplay& next) {
  fHistory.Replay(direction, next);
  if (fObserver) fObserver->LinesChanged(next.change);
}

TSavePlan TDocument::PlanSave(const entry_ref& file, const TLyricsForm& form) const {
  TSavePlan plan{
      file, form, Bytes(form), characters_outside(Lines(), form.encoding), false, !fIsWhole && file == fFile};
  plan.hasNewLosses = !plan.lostCharacters.empty() && plan.lostCharacters != fLostCharacters;
  return plan;
}

void TDocument::Saved(const TSavePlan& plan, const std::optional<TFileState>& state) {
  fHistory.MarkSaved();
  fIsWhole = true;
  fLostCharacters = plan.lostCharacters;
  fForm = plan.form;
  fState = state;
  if (fFile == plan.file) return;
  fFile = plan.file;
  NotifyReplaced();
}

TDiskState TDocument::CompareWithDisk(const std::optional<TFileState>& now) const {
  if (!now) return fState ? TDiskState::kMissing : TDiskState::kUnchanged;
  return fState && fState->HasBytesOf(*now) ? TDiskState::kUnchanged : TDiskState::kChanged;
}

void TDocument::NotifyReplaced() {
  if (fObserver) fObserver->DocumentReplaced();
}
