#pragma once

#include "lyrics/lines_change.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

/** A change to carry out, and the line that is the current one afterwards. */
struct TReplay {
  TLinesChange change;
  int32 line = 0;
};

/** The steps that led to the document as it stands, to be undone and done again; whichever edit view they were made in.
    Holds a copy of the lines. No thread of its own. */
class TEditHistory {
public:
  /** Another document, just as it lies on the disk: there is nothing to undo. */
  void Reset(const std::list<std::string>& lines);
  const std::vector<std::string>& Lines() const { return fLines; }

  /** The document has changed. Typing in one line joins the step before while it goes on without a pause, and is no
      step when the lines stay as they are; every other command is a step of its own. The lines are the current ones
      before and after. False when a change lies outside the document; nothing is recorded then. */
  bool Record(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter, bigtime_t nowUs);

  /** What is to be done next; none when there is no step. It counts as done by Undo or Redo. */
  std::optional<TReplay> NextUndo() const;
  std::optional<TReplay> NextRedo() const;
  void Undo();
  void Redo();
  bool CanUndo() const { return fDone > 0; }
  bool CanRedo() const { return fDone < fSteps.size(); }
  /** The kind of the step that would be undone. */
  std::optional<TEditKind> LastKind() const;

  /** The document as it stands is on the disk. */
  void MarkSaved();
  /** No state of it is. */
  void MarkUnsaved() { fSavedState = -1; }
  bool IsSaved() const { return fSavedState == StateNow(); }

private:
  /** Lines joined by line feeds; of lines that end alike only the differing beginnings, when `areHeads`. */
  struct Step {
    int64 state = 0; // the document's after the step
    TEditKind kind = TEditKind::kOther;
    int32 first = 0;
    int32 countBefore = 0;
    int32 countAfter = 0;
    bool areHeads = false;
    std::string before;
    std::string after;
    int32 lineBefore = 0;
    int32 lineAfter = 0;
    bigtime_t whenUs = 0;
    size_t Bytes() const { return sizeof(Step) + before.size() + after.size(); }
  };

  Step MakeStep(const TLinesChange& change) const;
  bool JoinsLast(const TLinesChange& change, TEditKind kind, bigtime_t nowUs) const;
  void Apply(const TLinesChange& change);
  TReplay Replay(const Step& step, bool undoing) const;
  void Push(Step step);
  void ForgetRedo();
  void ForgetOldest();
  int64 StateNow() const { return fDone > 0 ? fSteps[fDone - 1].state : fFirstState; }

  std::vector<std::string> fLines;
  std::deque<Step> fSteps;
  size_t fDone = 0; // steps that are not undone
  size_t fBytes = 0;
  int64 fFirstState = 0;
  int64 fLastState = 0;
  int64 fSavedState = 0;
  bool fRunGoesOn = false; // typing may join the last step
};
