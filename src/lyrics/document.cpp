#include "lyrics/document.h"

#include "lyrics/exact_lyrics.h"

#include <utility>

namespace {

bool has_byte_order_mark(const std::list<std::string>& lines) {
  return !lines.empty() && lines.front().starts_with(kByteOrderMark);
}

} // namespace

void prepare_for_editing(std::list<std::string>* lines) {
  if (lines->empty()) lines->emplace_back();
  std::string& first = lines->front();
  if (first.starts_with(kByteOrderMark)) first.erase(0, kByteOrderMark.size());
}

TCommonSource prepare_file(std::list<std::string>* lines, const TLyricsForm& form, bool lacksLastLineEnd) {
  const bool isCommon = form.dialect == TDialect::kCommon;
  const bool hasByteOrderMark = has_byte_order_mark(*lines);
  prepare_for_editing(lines);
  TCommonSource source = isCommon ? show_as_family(lines) : TCommonSource();
  source.hasByteOrderMark = hasByteOrderMark && (isCommon || is_foreign(form.encoding));
  source.lacksLastLineEnd = isCommon && lacksLastLineEnd;
  return source;
}

std::optional<TOpenedLyrics> open_lyrics(const entry_ref& file, const entry_ref& source, const TReadChoice& choice) {
  TOpenedLyrics opened;
  TReadReport report;
  long crType = 0;
  long encoding = 0;
  const bool isRead = choice.encoding ? load_lyrics_as(static_cast<long>(*choice.encoding), source, &opened.lines,
                                                       &crType, &encoding, &report)
                                      : load_lyrics(source, &opened.lines, &crType, &encoding, &report);
  if (!isRead) return {};
  opened.file = file;
  opened.form = {any_encoding_of(encoding), line_end_of(crType), TDialect::kFamily};
  opened.losses = report.losses;
  opened.isEmptyFile = report.state.size == 0;
  opened.isRecovered = source != file;
  opened.state =
      opened.isRecovered ? look_at_file(file.FullPath(), kMaxLyricsFileSize).state : std::optional(report.state);
  const TTagUse tags = choice.recognisesCommon ? tags_used_in(opened.lines) : TTagUse();
  opened.hasMixedTags = tags.IsMixed();
  if (tags.IsCommon()) opened.form.dialect = TDialect::kCommon;
  opened.source = prepare_file(&opened.lines, opened.form, report.lacksLastLineEnd);
  return opened;
}

void TDocument::Begin(const std::list<std::string>& lines, const TLyricsForm& form) {
  ++fSourceNumber;
  fHistory.Reset(lines);
  fForm = form;
  fFile = {};
  fState.reset();
  fStart.reset();
  fUnread = {};
  fAccepted.clear();
  fSource = {};
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

void TDocument::Open(TOpenedLyrics opened) {
  Begin(opened.lines, opened.form);
  fUnread = opened.losses;
  fSource = std::move(opened.source);
  if (opened.isRecovered) {
    fHistory.MarkUnsaved();
  } else if (opened.state) {
    fStart = {opened.file.FullPath(), opened.form.encoding, opened.form.dialect, *opened.state};
  }
  BindToFile(opened.file, opened.state);
}

void TDocument::Recover(const TOpenedLyrics& opened, TEditHistory history) {
  Begin({}, opened.form);
  if (opened.file.IsEmpty()) history.MarkUnsaved();
  fHistory.Replace(std::move(history));
  fUnread = opened.losses;
  fSource = opened.source;
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

void TDocument::Rewrite(const std::list<std::string>& lines, int32 line, bigtime_t nowUs, TEditKind kind) {
  fHistory.Record({0, static_cast<int32>(Lines().size()), lines}, kind, line, line, nowUs);
  NotifyReplaced();
}

/** Of the undone step, or the one that is redone. */
TEditKind TDocument::KindReplayed(TReplayDirection direction) const {
  const size_t done = fHistory.CountDone();
  return fHistory.Steps()[direction == TReplayDirection::kUndo ? done - 1 : done].kind;
}

void TDocument::Replay(TReplayDirection direction, const TReplay& next) {
  if (KindReplayed(direction) == TEditKind::kUnifyAsCommon)
    fForm.dialect = direction == TReplayDirection::kUndo ? TDialect::kFamily : TDialect::kCommon;
  fHistory.Replay(direction, next);
  if (fObserver) fObserver->LinesChanged(next.change);
}

/** The form and the source are set first, so that the journal has them with the step. */
void TDocument::Unify(TDialect dialect, int32 line, bigtime_t nowUs) {
  std::list<std::string> lines = CopyLines();
  TCommonSource source = show_as_family(&lines);
  const bool isCommon = dialect == TDialect::kCommon;
  if (isCommon) {
    source.hasByteOrderMark = fSource.hasByteOrderMark;
    fSource = std::move(source);
    ++fSourceNumber;
  }
  fForm.dialect = dialect;
  Rewrite(lines, line, nowUs, isCommon ? TEditKind::kUnifyAsCommon : TEditKind::kOther);
}

/** The form and the source are set first, so that the journal has them with the step. */
void TDocument::Reload(const TOpenedLyrics& opened, int32 line, bigtime_t nowUs) {
  fForm = opened.form;
  fSource = opened.source;
  ++fSourceNumber;
  Rewrite(opened.lines, line, nowUs);
  fHistory.MarkSaved();
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
