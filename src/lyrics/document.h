#pragma once

#include "lyrics/edit_history.h"
#include "lyrics/file_state.h"
#include "lyrics/lyrics_file.h"
#include "lyrics/lyrics_form.h"

#include <list>
#include <optional>
#include <set>
#include <string>
#include <vector>

/** Is notified after every change of a document, on the document's thread. */
class TDocumentObserver {
public:
  TDocumentObserver() = default;
  TDocumentObserver(const TDocumentObserver&) = delete;
  TDocumentObserver& operator=(const TDocumentObserver&) = delete;
  virtual ~TDocumentObserver() = default;

  virtual void LinesChanged(const TLinesChange& change) = 0;
  /** Another document, every line at once, or another file name. */
  virtual void DocumentReplaced() = 0;
};

/** A file as it was read for editing. */
struct TOpenedLyrics {
  entry_ref file;
  TLyricsForm form;
  std::list<std::string> lines; // at least one, without byte-order mark
  TCommonSource source;         // of a file in the common dialect
  bool hasMixedTags = false;    // of both dialects; the lines are as in the file
  TReadLosses losses;
  bool isEmptyFile = false;
  bool isRecovered = false; // the lines come from another file, and are not saved in this one
  std::optional<TFileState> state;
};

/** The bytes that were opened, and their encoding. */
struct TOpenedFile {
  std::string path;
  TEncoding encoding = TEncoding::kUtf8;
  TDialect dialect = TDialect::kFamily;
  TFileState state;
};

/** Removes a byte-order mark, and makes the text one empty line if it has none: lines as an edit view shows them. */
void prepare_for_editing(std::list<std::string>* lines);

/** The same for the lines of a file in that form: the tags of the common dialect are converted. */
TCommonSource prepare_file(std::list<std::string>* lines, const TLyricsForm& form, bool lacksLastLineEnd);

/** How a file is to be read. */
struct TReadChoice {
  bool recognisesCommon = true;      // detect the dialect
  std::optional<TEncoding> encoding; // none: as the settings ask
};

/** Reads `file` with the lines of `source`, usually the same file. Nothing when `source` cannot be read as lyrics. */
std::optional<TOpenedLyrics> open_lyrics(const entry_ref& file, const entry_ref& source,
                                         const TReadChoice& choice = {});

/** The file of a save, as it was just before. */
struct TSaveTarget {
  bool isDocumentsFile = false; // under whichever name
  TFileLook now{TFileKind::kNoAnswer, {}};
};

/** What a save writes, and what it loses. Made before anything is written. */
struct TSavePlan {
  entry_ref file;
  TLyricsForm form;
  std::string bytes;
  /** That the encoding cannot hold, each once, in the order of the text. */
  std::vector<std::string> lostCharacters;
  /** Those of them that no earlier save in this file and encoding has lost. */
  std::vector<std::string> newLostCharacters;
  /** Of the document's file, which is replaced by what was read of it. */
  TReadLosses unread;
  bool overwrites = false; // a version of the document's file that was never read
};

/** The document's file, compared with the one that was last read or written. */
enum class TDiskState { kUnchanged, kChanged, kMissing, kFolderMissing, kNotRegular, kUnreadable, kNoAnswer };

/** The open lyrics document: its lines with their history, its file as last read or written, its form, and what is lost
    in reading and saving. The only way to change the lines is a step of the history. No window, no thread, no clock:
    owned by one thread, which passes the time. */
class TDocument {
public:
  /** Not owned; null for none. */
  void SetObserver(TDocumentObserver* observer) { fObserver = observer; }

  /** Not owned; null for none. */
  void SetHistorySink(TEditHistorySink* sink) { fHistory.SetSink(sink); }

  /** One empty line. The file may exist already. */
  void StartNew(const TLyricsForm& form);
  void BindToFile(const entry_ref& file, const std::optional<TFileState>& state);
  void Open(TOpenedLyrics opened);
  /** Continues a history that was restored. The lines of `opened` are not used; without a file it is a document that
      was never saved. */
  void Recover(const TOpenedLyrics& opened, TEditHistory history);

  const std::vector<std::string>& Lines() const { return fHistory.Lines(); }
  std::list<std::string> CopyLines() const { return {Lines().begin(), Lines().end()}; }
  const TEditHistory& History() const { return fHistory; }
  const TLyricsForm& Form() const { return fForm; }
  /** Empty while the document was never saved. */
  const entry_ref& File() const { return fFile; }
  TLyricsInfo Info() const;
  /** What the lines do not hold of the file; nothing after it was saved. */
  const TReadLosses& Unread() const { return fUnread; }
  /** Another one for each document that is started or opened. */
  int32 Number() const { return fNumber; }
  /** True when the lines differ from those in the file. */
  bool IsModified() const { return !fHistory.IsSaved(); }

  /** A step, as `TEditHistory::Record`. */
  bool Change(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after, bigtime_t nowUs);
  /** Replaces every line in one step; `line` is the current one before and after. */
  void Rewrite(const std::list<std::string>& lines, int32 line, bigtime_t nowUs, TEditKind kind = TEditKind::kOther);
  /** The step to undo or redo next, if any; the document changes with Replay. */
  std::optional<TReplay> Next(TReplayDirection direction) const { return fHistory.Next(direction); }
  bool CanReplay(TReplayDirection direction) const { return fHistory.Can(direction); }
  void Replay(TReplayDirection direction, const TReplay& next);
  std::optional<TEditKind> LastKind() const { return fHistory.LastKind(); }

  /** Gives the time tags of a file with mixed ones the same form, in one step; saves write that dialect, the common one
      with the thousandths that the file has. */
  void Unify(TDialect dialect, int32 line, bigtime_t nowUs);
  const TCommonSource& Source() const { return fSource; }
  /** Another one whenever the source is. */
  int32 SourceNumber() const { return fSourceNumber; }

  std::string Bytes(const TLyricsForm& form) const { return encoded_lines(Lines(), form, fSource); }
  TSavePlan PlanSave(const entry_ref& file, const TLyricsForm& form, const TSaveTarget& target) const;
  /** The plan's bytes are in its file, which is the document's from now on. */
  void Saved(const TSavePlan& plan, const std::optional<TFileState>& state);
  /** No state of the history counts as saved until the next save. */
  void SaveFailed() { fHistory.MarkUnsaved(); }

  /** The file when it was last read or written; nothing for a document without one. */
  const std::optional<TFileState>& StateOnDisk() const { return fState; }
  /** The file whose lines the history started with, as it was then; nothing if they came from elsewhere. */
  const std::optional<TOpenedFile>& Start() const { return fStart; }
  /** Compares it with the file as it is now, by its bytes: a file that was only touched, or replaced by equal bytes, is
      unchanged. A document without a file is. */
  TDiskState CompareWithDisk(const TFileLook& now) const;
  /** The unchanged file has another identity or time now. */
  void SeenOnDisk(const TFileState& state) { fState = state; }
  /** Replaces the lines by those of the file, in one step that can be undone; `line` is the current one. */
  void Reload(const TOpenedLyrics& opened, int32 line, bigtime_t nowUs);

private:
  void Begin(const std::list<std::string>& lines, const TLyricsForm& form);
  void NotifyReplaced();
  TEditKind KindReplayed(TReplayDirection direction) const;

  TEditHistory fHistory;
  TLyricsForm fForm;
  entry_ref fFile;
  std::optional<TFileState> fState;
  std::optional<TOpenedFile> fStart;
  TReadLosses fUnread;
  TCommonSource fSource; // also after saves: lines that an undo brings back are written as they were
  int32 fSourceNumber = 0;
  std::set<std::string> fAccepted; // characters that saves in fAcceptedIn have lost
  TEncoding fAcceptedIn = TEncoding::kUtf8;
  int32 fNumber = 0;
  TDocumentObserver* fObserver = nullptr;
};
