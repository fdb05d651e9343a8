#pragma once

#include "lyrics/lines_change.h"

#include <deque>
#include <optional>
#include <string>
#include <vector>

enum class TReplayDirection { kUndo, kRedo };

/** A change to carry out, and the lines that are selected after it. */
struct TReplay {
  TLinesChange change;
  int32 line = 0; // the current one
  int32 anchor = 0;
};

/** A step as the history stores it: the lines before and after, each with a line feed; with `areHeads` without the end
    that the two versions of a line have in common. */
struct TEditStep {
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
  // From the current line to the other end of the selection; no journal stores it.
  int32 reachBefore = 0;
  int32 reachAfter = 0;
  bigtime_t whenUs = 0;
  size_t Bytes() const { return sizeof(TEditStep) + before.size() + after.size(); }
};

/** Is notified of everything that happens to a history, so that it can be repeated. On the document's thread, after
    the history has changed. */
class TEditHistorySink {
public:
  TEditHistorySink() = default;
  TEditHistorySink(const TEditHistorySink&) = delete;
  TEditHistorySink& operator=(const TEditHistorySink&) = delete;
  virtual ~TEditHistorySink() = default;

  virtual void HistoryReset() = 0;
  virtual void StepRecorded(const TEditStep& step) = 0;
  /** More typing joined the last step, which has another `after`. */
  virtual void StepExtended(const TEditStep& step) = 0;
  virtual void StepReplayed(TReplayDirection direction) = 0;
  virtual void SavedStateChanged(bool isSaved) = 0;
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
      no step when the lines stay the same; every other command is a step of its own. Undo and redo
      select the lines that were selected before and after. Returns false, with nothing recorded, for a change outside
      the document. */
  bool Record(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after, bigtime_t nowUs);

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
  void MarkUnsaved();
  bool IsSaved() const { return fSavedState == CurrentState(); }

  /** Not owned; null for none. A copy of the history has the same sink. */
  void SetSink(TEditHistorySink* sink) { fSink = sink; }

  /** Applies and returns the next step in that direction; nothing when there is none. */
  std::optional<TReplay> ReplayNext(TReplayDirection direction);

  // What a journal stores, and how it is restored. Input is untrusted: false, with nothing changed, for steps that do
  // not fit the lines. The sink is not notified.
  const std::deque<TEditStep>& Steps() const { return fSteps; }
  /** The number of steps that are not undone. */
  size_t CountDone() const { return fDone; }
  /** The number of steps before the saved state; nothing if no state that can be reached counts as saved. */
  std::optional<size_t> SavedAfter() const;
  /** Replaces the history. */
  bool Restore(const std::list<std::string>& lines, std::vector<TEditStep> steps, size_t done,
               std::optional<size_t> saved);
  /** Takes over the lines and steps of another history, but not its sink. */
  void Replace(TEditHistory other);
  /** Records and applies a step that another history has recorded. */
  bool RestoreStep(TEditStep step);
  /** More typing joins the last step. */
  bool RestoreTyping(const std::string& line);

private:
  using Step = TEditStep;

  Step MakeStep(const TLinesChange& change) const;
  bool JoinsLast(const TLinesChange& change, TEditKind kind, bigtime_t nowUs) const;
  void Apply(const TLinesChange& change);
  TReplay ReplayOf(const Step& step, TReplayDirection direction) const;
  void Push(Step step);
  void DropRedo();
  void DropOldest();
  void Extend(const std::string& line, bigtime_t nowUs);
  bool Fits(const TEditStep& step, TReplayDirection direction) const;
  int64 CurrentState() const { return fDone > 0 ? fSteps[fDone - 1].state : fFirstState; }

  std::vector<std::string> fLines;
  std::deque<Step> fSteps;
  size_t fDone = 0; // steps before the current state
  size_t fBytes = 0;
  int64 fFirstState = 0;
  int64 fLastState = 0;
  int64 fSavedState = 0;
  bool fCanJoin = false; // typing may join the last step
  TEditHistorySink* fSink = nullptr;
};
