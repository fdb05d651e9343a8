#pragma once

#include "editviews/edit_view_interface.h"
#include "lyrics/edit_history.h"

/** Who keeps the history of the lines that the edit views show. On the window's thread. */
class TEditListener {
public:
  TEditListener() = default;
  TEditListener(const TEditListener&) = delete;
  TEditListener& operator=(const TEditListener&) = delete;
  virtual ~TEditListener() = default;

  /** The user has changed lines in an edit view, which shows them already. */
  virtual void LinesEdited(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter) = 0;
  /** The last stamp is to be taken back, for another try. */
  virtual void RetakeRqtd() = 0;
};

/** An edit view whose changes are kept in a history. */
class TTrackedEditView : public TEditViewInterface {
public:
  /** Looked at; null for none. */
  void SetListener(TEditListener* listener) { fListener = listener; }
  /** Every change that the user has made so far is told to the listener. */
  virtual void FlushEdits() {}
  /** Carries out a step of the history, which is not told back. False when the user has changed something meanwhile:
      the listener knows it by then. */
  virtual bool Replay(const TReplay& replay) = 0;

protected:
  TEditListener* Listener() const { return fListener; }

private:
  TEditListener* fListener = nullptr;
};
