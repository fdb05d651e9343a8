#pragma once

#include "lyrics/lines_change.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

enum class TReplayDirection { kUndo, kRedo };

/** A change to carry out, and the line that is current after it. */
struct TReplay {
  TLinesChange change;
  int32 line = 0;
};

/** The document's lines and the steps that led to them, which can be undone and redone, whichever edit view they were
    made in. No clock and no thread of its own. */
class TEditHistory {
public:
  /** Starts with these lines, which count as saved, and nothing to undo. Copied, not moved: what is copied lies
     together in memory, and the nodes of a long list that is freed leave no gaps between its lines. */
  void Reset(const std::list<std::string>& lines);
  const std::vector<std::string>& Lines() const { return fLines; }

  /** Records and applies a change. Typing in one line joins the previous step while it goes on without a pause, and is
      no step when the lines stay the same; every other command is a step of its own. The line numbers are the current
      line before and after. Returns false, with nothing recorded, for a change outside the document. */
  bool Record(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter, bigtime_t nowUs);

  bool Can(TReplayDirection direction) const {
    return direction == TReplayDirection::kUndo ? fDone > 0 : fDone < fSteps.size();
  }
  /** The next step in that direction, not yet applied; nothing when there is none. */
  std::optional<TReplay> Next(TReplayDirection direction) const;
  /** Applies what Next has returned for the same direction. */
  void Replay(TReplayDirection direction, const TReplay& next);
  /** The kind of the step that would be undone. */
  std::optional<TEditKind> LastKind() const;

  /** Marks the current state as saved. */
  void MarkSaved();
  /** Marks no state as saved. */
  void MarkUnsaved() { fSavedState = -1; }
  bool IsSaved() const { return fSavedState == CurrentState(); }

private:
  /** The lines before and after, each with a line feed; with `areHeads` without the end that the two versions of a line
      have in common. */
  struct Step {
    int64 state = 0; // identifies the document after the step
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
  TReplay ReplayOf(const Step& step, TReplayDirection direction) const;
  void Push(Step step);
  void DropRedo();
  void DropOldest();
  int64 CurrentState() const { return fDone > 0 ? fSteps[fDone - 1].state : fFirstState; }

  std::vector<std::string> fLines;
  std::deque<Step> fSteps;
  size_t fDone = 0; // steps before the current state
  size_t fBytes = 0;
  int64 fFirstState = 0;
  int64 fLastState = 0;
  int64 fSavedState = 0;
  bool fCanJoin = false; // typing may join the last step
};
