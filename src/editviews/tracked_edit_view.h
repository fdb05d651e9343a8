#pragma once

#include "editviews/edit_view_interface.h"
#include "lyrics/edit_history.h"
#include "lyrics/timed_line.h"

/** Receives the user's changes in an edit view. On the window's thread. */
class TEditListener {
public:
  TEditListener() = default;
  TEditListener(const TEditListener&) = delete;
  TEditListener& operator=(const TEditListener&) = delete;
  virtual ~TEditListener() = default;

  /** The user has changed lines in an edit view, which already shows them. */
  virtual void LinesEdited(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after) = 0;
  /** How times within lines are written in the document. */
  virtual TWordForm WordForm() const = 0;
  /** The times of the current line's words, while the view works word by word. */
  virtual void ShowWordTimes(const std::optional<std::string>& text) = 0;
  /** Undo the last stamp and rewind the song, for another try. */
  virtual void RetakeRqtd() = 0;
};

/** An edit view whose changes are recorded in the document's history. */
class TTrackedEditView : public TEditViewInterface {
public:
  /** Not owned; null for none. */
  void SetListener(TEditListener* listener) { fListener = listener; }
  TEditListener* Listener() const { return fListener; }
  /** Reports every change that the user has made so far to the listener. */
  virtual void FlushEdits() {}
  /** Shows a step of the history, which is not reported back. Returns false when the user has changed something in the
      meantime; the listener has been notified by then. */
  virtual bool Replay(const TReplay& replay) = 0;
  /** Brings a place of a line into sight, selected as far as the view can: `match`, which follows `before`. */
  virtual void ShowMatch(int32 line, const std::string& before, const std::string& match) = 0;

private:
  TEditListener* fListener = nullptr;
};
