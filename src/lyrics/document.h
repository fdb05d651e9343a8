#pragma once

#include "lyrics/edit_history.h"
#include "lyrics/file_state.h"
#include "lyrics/lyrics_file.h"
#include "lyrics/lyrics_form.h"

#include <list>
#include <optional>
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
  bool isWhole = true;
  bool isEmptyFile = false;
  bool isRecovered = false; // the lines come from another file, and are not saved in this one
  std::optional<TFileState> state;
};

/** Reads `file` with the lines of `source`, usually the same file. Nothing when `source` cannot be read as lyrics. */
std::optional<TOpenedLyrics> open_lyrics(const entry_ref& file, const entry_ref& source);

/** What a save writes, and what it loses. Made before anything is written. */
struct TSavePlan {
  entry_ref file;
  TLyricsForm form;
  std::string bytes;
  /** That the encoding cannot hold, each once, in the order of the text. */
  std::vector<std::string> lostCharacters;
  bool hasNewLosses = false; // there are some, and not the same as in the last save
  bool losesTail = false;    // replaces the document's file, which was not read whole
};

enum class TDiskState { kUnchanged, kChanged, kMissing };

/** The open lyrics document: its lines with their history, its file as last read or written, its form, and what is lost
    in reading and saving. The only way to change the lines is a step of the history. No window, no thread, no clock:
    owned by one thread, which passes the time. */
class TDocument {
public:
  /** Not owned; null for none. */
  void SetObserver(TDocumentObserver* observer) { fObserver = observer; }

  /** One empty line. The file may exist already. */
  void StartNew(const TLyricsForm& form);
  void BindToFile(const entry_ref& file, const std::optional<TFileState>& state);
  void Open(const TOpenedLyrics& opened);

  const std::vector<std::string>& Lines() const { return fHistory.Lines(); }
  std::list<std::string> CopyLines() const { return {Lines().begin(), Lines().end()}; }
  const TLyricsForm& Form() const { return fForm; }
  /** Empty while the document was never saved. */
  const entry_ref& File() const { return fFile; }
  TLyricsInfo Info() const;
  /** False when the file holds more than the lines show: a tail after a NUL, or bytes outside its encoding. */
  bool IsWhole() const { return fIsWhole; }
  /** True when the lines differ from those in the file. */
  bool IsModified() const { return !fHistory.IsSaved(); }

  /** A step, as `TEditHistory::Record`. */
  bool Change(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter, bigtime_t nowUs);
  /** Replaces every line in one step; `line` is the current one before and after. */
  void Rewrite(const std::list<std::string>& lines, int32 line, bigtime_t nowUs);
  /** The step to undo or redo next, if any; the document changes with Replay. */
  std::optional<TReplay> Next(TReplayDirection direction) const { return fHistory.Next(direction); }
  bool CanReplay(TReplayDirection direction) const { return fHistory.Can(direction); }
  void Replay(TReplayDirection direction, const TReplay& next);
  std::optional<TEditKind> LastKind() const { return fHistory.LastKind(); }

  std::string Bytes(const TLyricsForm& form) const { return encoded_lines(Lines(), form); }
  TSavePlan PlanSave(const entry_ref& file, const TLyricsForm& form) const;
  /** The plan's bytes are in its file, which is the document's from now on. */
  void Saved(const TSavePlan& plan, const std::optional<TFileState>& state);
  /** No state of the history counts as saved until the next save. */
  void SaveFailed() { fHistory.MarkUnsaved(); }

  /** The file when it was last read or written; nothing for a document without one. */
  const std::optional<TFileState>& StateOnDisk() const { return fState; }
  /** Compares the file as it is now (nothing: it cannot be read) with the one that was last read or written, by its
      bytes: a file that was only touched, or replaced by equal bytes, is unchanged. */
  TDiskState CompareWithDisk(const std::optional<TFileState>& now) const;

private:
  void Begin(const std::list<std::string>& lines, const TLyricsForm& form);
  void NotifyReplaced();

  TEditHistory fHistory;
  TLyricsForm fForm;
  entry_ref fFile;
  std::optional<TFileState> fState;
  bool fIsWhole = true;
  std::vector<std::string> fLostCharacters; // in the last save
  TDocumentObserver* fObserver = nullptr;
};
