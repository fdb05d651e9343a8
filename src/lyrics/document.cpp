#include "lyrics/document.h"

#include "lyrics/exact_lyrics.h"

#include <string_view>
#include <utility>

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

} // namespace

void prepare_for_editing(std::list<std::string>* lines) {
  if (lines->empty()) lines->emplace_back();
  std::string& first = lines->front();
  if (first.starts_with(kByteOrderMark)) first.erase(0, kByteOrderMark.size());
}

std::optional<TOpenedLyrics> open_lyrics(const entry_ref& file, const entry_ref& source) {
  TOpenedLyrics opened;
  TReadReport report;
  long crType = 0;
  long encoding = 0;
  if (!load_lyrics(source, &opened.lines, &crType, &encoding, &report)) return {};
  opened.file = file;
  opened.form = {encoding_of(encoding), line_end_of(crType)};
  opened.losses = report.losses;
  opened.isEmptyFile = report.state.size == 0;
  opened.isRecovered = source != file;
  opened.state =
      opened.isRecovered ? look_at_file(file.FullPath(), kMaxLyricsFileSize).state : std::optional(report.state);
  prepare_for_editing(&opened.lines);
  return opened;
}

void TDocument::Begin(const std::list<std::string>& lines, const TLyricsForm& form) {
  fHistory.Reset(lines);
  fForm = form;
  fFile = {};
  fState.reset();
  fStart.reset();
  fUnread = {};
  fAccepted.clear();
  ++fNumber;
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
  fUnread = opened.losses;
  if (opened.isRecovered) {
    fHistory.MarkUnsaved();
  } else if (opened.state) {
    fStart = {opened.file.FullPath(), opened.form.encoding, *opened.state};
  }
  BindToFile(opened.file, opened.state);
}

void TDocument::Recover(const TOpenedLyrics& opened, TEditHistory history) {
  Begin({}, opened.form);
  if (opened.file.IsEmpty()) history.MarkUnsaved();
  fHistory.Replace(std::move(history));
  fUnread = opened.losses;
  BindToFile(opened.file, opened.state);
}

TLyricsInfo TDocument::Info() const {
  return {static_cast<long>(fForm.lineEnd), static_cast<long>(fForm.encoding), fFile};
}

bool TDocument::Change(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after,
                       bigtime_t nowUs) {
  if (!fHistory.Record(change, kind, before, after, nowUs)) return false;
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

void TDocument::Reload(const TOpenedLyrics& opened, int32 line, bigtime_t nowUs) {
  Rewrite(opened.lines, line, nowUs);
  fHistory.MarkSaved();
  fForm = opened.form;
  fState = opened.state;
  fUnread = opened.losses;
}

TSavePlan TDocument::PlanSave(const entry_ref& file, const TLyricsForm& form, const TSaveTarget& target) const {
  TSavePlan plan{file, form, Bytes(form), characters_outside(Lines(), form.encoding), {}, {}, false};
  for (const std::string& character : plan.lostCharacters) {
    const bool isAccepted = file == fFile && form.encoding == fAcceptedIn && fAccepted.contains(character);
    if (!isAccepted) plan.newLostCharacters.push_back(character);
  }
  if (!target.isDocumentsFile) return plan;
  const TDiskState state = CompareWithDisk(target.now);
  const bool isThere = state == TDiskState::kUnchanged || state == TDiskState::kChanged;
  if (isThere) plan.unread = fUnread;
  plan.overwrites = state == TDiskState::kChanged || state == TDiskState::kUnreadable;
  return plan;
}

void TDocument::Saved(const TSavePlan& plan, const std::optional<TFileState>& state) {
  fHistory.MarkSaved();
  fUnread = {};
  if (fFile != plan.file || fAcceptedIn != plan.form.encoding) fAccepted.clear();
  fAcceptedIn = plan.form.encoding;
  fAccepted.insert(plan.lostCharacters.begin(), plan.lostCharacters.end());
  fForm = plan.form;
  fState = state;
  if (fFile == plan.file) return;
  fFile = plan.file;
  NotifyReplaced();
}

TDiskState TDocument::CompareWithDisk(const TFileLook& now) const {
  if (fFile.IsEmpty()) return TDiskState::kUnchanged;
  switch (now.kind) {
  case TFileKind::kRegular:
    return fState && now.state && fState->HasBytesOf(*now.state) ? TDiskState::kUnchanged : TDiskState::kChanged;
  case TFileKind::kTooLarge:
    return TDiskState::kChanged;
  case TFileKind::kMissing:
    return TDiskState::kMissing;
  case TFileKind::kFolderMissing:
    return TDiskState::kFolderMissing;
  case TFileKind::kNotRegular:
    return TDiskState::kNotRegular;
  case TFileKind::kUnreadable:
    return TDiskState::kUnreadable;
  case TFileKind::kNoAnswer:
    break;
  }
  return TDiskState::kNoAnswer;
}

void TDocument::NotifyReplaced() {
  if (fObserver) fObserver->DocumentReplaced();
}
