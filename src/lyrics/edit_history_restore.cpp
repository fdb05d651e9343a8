/** Restoring a history from what a journal has stored of it. */

#include "lyrics/edit_history.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

/** Takes the text up to the next line feed; nothing without one. */
std::optional<std::string_view> next_line(std::string_view* text) {
  const size_t end = text->find('\n');
  if (end == std::string_view::npos) return {};
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(end + 1);
  return line;
}

bool has_lines(std::string_view text, int32 count) {
  return (text.empty() || text.back() == '\n') && std::count(text.begin(), text.end(), '\n') == count;
}

} // namespace

std::optional<size_t> TEditHistory::SavedAfter() const {
  if (fSavedState == fFirstState) return 0;
  const auto saved =
      std::find_if(fSteps.begin(), fSteps.end(), [this](const TEditStep& step) { return step.state == fSavedState; });
  if (saved == fSteps.end()) return {};
  return static_cast<size_t>(saved - fSteps.begin()) + 1;
}

/** True if the lines are those from which the step goes on in that direction. */
bool TEditHistory::Fits(const TEditStep& step, TReplayDirection direction) const {
  const bool undoing = direction == TReplayDirection::kUndo;
  const int32 count = undoing ? step.countAfter : step.countBefore;
  if (step.first < 0 || count < 0 || int64{step.first} + count > static_cast<int64>(fLines.size())) return false;
  if (!has_lines(step.before, step.countBefore) || !has_lines(step.after, step.countAfter)) return false;
  if (step.areHeads && step.countBefore != step.countAfter) return false;
  std::string_view text = undoing ? step.after : step.before;
  for (auto line = fLines.begin() + step.first; const auto expected = next_line(&text); ++line) {
    if (step.areHeads ? !line->starts_with(*expected) : *line != *expected) return false;
  }
  return true;
}

std::optional<TReplay> TEditHistory::ReplayNext(TReplayDirection direction) {
  std::optional<TReplay> next = Next(direction);
  if (next) Replay(direction, *next);
  return next;
}

bool TEditHistory::RestoreStep(TEditStep step) {
  if (!Fits(step, TReplayDirection::kRedo)) return false;
  DropRedo();
  Apply(ReplayOf(step, TReplayDirection::kRedo).change);
  Push(std::move(step));
  fCanJoin = false;
  return true;
}

bool TEditHistory::RestoreTyping(const std::string& line) {
  if (fDone == 0 || fDone < fSteps.size() || line.find('\n') != std::string::npos) return false;
  const TEditStep& last = fSteps.back();
  if (last.kind != TEditKind::kTyping || last.areHeads || last.countAfter != 1) return false;
  Apply({last.first, 1, {line}});
  Extend(line, last.whenUs);
  return true;
}

bool TEditHistory::Restore(const std::list<std::string>& lines, std::vector<TEditStep> steps, size_t done,
                           std::optional<size_t> saved) {
  if (done > steps.size() || saved.value_or(0) > steps.size()) return false;
  TEditHistory restored;
  restored.Reset(lines);
  for (TEditStep& step : steps) {
    step.state = ++restored.fLastState;
    restored.fBytes += step.Bytes();
    restored.fSteps.push_back(std::move(step));
  }
  restored.fDone = done;
  restored.fSavedState = -1;
  if (saved) restored.fSavedState = *saved == 0 ? restored.fFirstState : restored.fSteps[*saved - 1].state;
  // Each step must fit where undoing all, redoing all, and going back leads.
  for (const auto direction : {TReplayDirection::kUndo, TReplayDirection::kRedo}) {
    while (restored.Can(direction)) {
      const bool undoing = direction == TReplayDirection::kUndo;
      if (!restored.Fits(restored.fSteps[undoing ? restored.fDone - 1 : restored.fDone], direction)) return false;
      restored.ReplayNext(direction);
    }
  }
  while (restored.fDone > done) restored.ReplayNext(TReplayDirection::kUndo);
  Replace(std::move(restored));
  return true;
}

void TEditHistory::Replace(TEditHistory other) {
  other.fSink = fSink;
  *this = std::move(other);
}
