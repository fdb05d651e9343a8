#include "lyrics/edit_history.h"

#include <algorithm>
#include <iterator>

namespace {

/** A pause of this length ends a step of typing. */
constexpr bigtime_t kPauseUs = 1000000;
/** The oldest steps are dropped beyond either limit; the last step is always kept. */
constexpr size_t kMaxSteps = 20000;
constexpr size_t kMaxBytes = 128 << 20;
constexpr int64 kNoState = -1;

void append_line(std::string_view line, std::string* text) {
  text->append(line);
  text->push_back('\n');
}

/** Removes the first line from the text, and returns it. */
std::string_view take_line(std::string_view* text) {
  const size_t end = text->find('\n');
  const std::string_view line = text->substr(0, end);
  text->remove_prefix(end + 1);
  return line;
}

size_t count_common_end(std::string_view left, std::string_view right) {
  return static_cast<size_t>(std::mismatch(left.rbegin(), left.rend(), right.rbegin(), right.rend()).first -
                             left.rbegin());
}

} // namespace

void TEditHistory::Reset(const std::list<std::string>& lines) {
  fLines.assign(lines.begin(), lines.end());
  fSteps.clear();
  fDone = 0;
  fBytes = 0;
  fFirstState = fSavedState = ++fLastState;
  fCanJoin = false;
  if (fSink) fSink->HistoryReset();
}

bool TEditHistory::Record(const TLinesChange& change, TEditKind kind, TSelectedLines before, TSelectedLines after,
                          bigtime_t nowUs) {
  const auto count = static_cast<int64>(fLines.size());
  if (change.first < 0 || change.removed < 0 || int64{change.first} + change.removed > count) return false;
  Step step = MakeStep(change);
  if (kind == TEditKind::kTyping && step.before == step.after && step.countBefore == step.countAfter) return true;
  const bool joins = JoinsLast(change, kind, nowUs);
  DropRedo();
  Apply(change);
  if (joins) {
    Extend(change.lines.front(), nowUs);
    if (fSink) fSink->StepExtended(fSteps.back());
    return true;
  }
  step.kind = kind;
  step.lineBefore = before.current;
  step.lineAfter = after.current;
  step.reachBefore = before.anchor - before.current;
  step.reachAfter = after.anchor - after.current;
  step.whenUs = nowUs;
  Push(std::move(step));
  fCanJoin = kind == TEditKind::kTyping;
  if (fSink) fSink->StepRecorded(fSteps.back());
  return true;
}

void TEditHistory::Extend(const std::string& line, bigtime_t nowUs) {
  Step& last = fSteps.back();
  fBytes += line.size() + 1 - last.after.size();
  last.after = line + '\n';
  last.whenUs = nowUs;
}

TEditHistory::Step TEditHistory::MakeStep(const TLinesChange& change) const {
  Step step;
  step.first = change.first;
  step.countBefore = change.removed;
  step.countAfter = static_cast<int32>(change.lines.size());
  // A single line is stored whole, so that further typing can join the step.
  step.areHeads = step.countBefore == step.countAfter && step.countBefore > 1;
  auto old = fLines.begin() + change.first;
  if (step.areHeads) {
    for (const std::string_view line : change.lines) {
      const std::string_view before = *old++;
      const size_t same = count_common_end(before, line);
      append_line(before.substr(0, before.size() - same), &step.before);
      append_line(line.substr(0, line.size() - same), &step.after);
    }
    return step;
  }
  for (int32 i = 0; i < change.removed; ++i) append_line(*old++, &step.before);
  for (const std::string& line : change.lines) append_line(line, &step.after);
  return step;
}

bool TEditHistory::JoinsLast(const TLinesChange& change, TEditKind kind, bigtime_t nowUs) const {
  if (!fCanJoin || fDone == 0 || fDone < fSteps.size() || kind != TEditKind::kTyping) return false;
  const Step& last = fSteps.back();
  const bool isOneLine = change.removed == 1 && change.lines.size() == 1;
  const bool wasOneLine = last.countBefore <= 1 && last.countAfter == 1;
  return isOneLine && wasOneLine && last.first == change.first && nowUs - last.whenUs < kPauseUs;
}

void TEditHistory::Apply(const TLinesChange& change) {
  const size_t kept = std::min(static_cast<size_t>(change.removed), change.lines.size());
  const auto first = fLines.begin() + change.first;
  const auto more = std::next(change.lines.begin(), static_cast<std::ptrdiff_t>(kept));
  const auto end = std::copy(change.lines.begin(), more, first);
  if (change.lines.size() > kept)
    fLines.insert(end, more, change.lines.end());
  else
    fLines.erase(end, first + change.removed);
}

void TEditHistory::Push(Step step) {
  step.state = ++fLastState;
  fBytes += step.Bytes();
  fSteps.push_back(std::move(step));
  fDone = fSteps.size();
  while (fSteps.size() > 1 && (fSteps.size() > kMaxSteps || fBytes > kMaxBytes)) DropOldest();
}

void TEditHistory::DropRedo() {
  while (fSteps.size() > fDone) {
    fBytes -= fSteps.back().Bytes();
    fSteps.pop_back();
  }
}

void TEditHistory::DropOldest() {
  fFirstState = fSteps.front().state;
  fBytes -= fSteps.front().Bytes();
  fSteps.pop_front();
  --fDone;
}

TReplay TEditHistory::ReplayOf(const Step& step, TReplayDirection direction) const {
  const bool undoing = direction == TReplayDirection::kUndo;
  TReplay replay;
  replay.line = undoing ? step.lineBefore : step.lineAfter;
  replay.anchor = replay.line + (undoing ? step.reachBefore : step.reachAfter);
  replay.change.first = step.first;
  replay.change.removed = undoing ? step.countAfter : step.countBefore;
  std::string_view text = undoing ? step.before : step.after;
  std::string_view oldText = undoing ? step.after : step.before;
  auto oldLine = fLines.begin() + step.first;
  while (!text.empty()) {
    std::string& line = replay.change.lines.emplace_back(take_line(&text));
    if (step.areHeads) line.append(*oldLine++, take_line(&oldText).size(), std::string::npos);
  }
  return replay;
}

std::optional<TReplay> TEditHistory::Next(TReplayDirection direction) const {
  if (!Can(direction)) return {};
  return ReplayOf(fSteps[direction == TReplayDirection::kUndo ? fDone - 1 : fDone], direction);
}

void TEditHistory::Replay(TReplayDirection direction, const TReplay& next) {
  Apply(next.change);
  fDone = direction == TReplayDirection::kUndo ? fDone - 1 : fDone + 1;
  fCanJoin = false;
  if (fSink) fSink->StepReplayed(direction);
}

std::optional<TEditKind> TEditHistory::LastKind() const {
  if (fDone == 0) return {};
  return fSteps[fDone - 1].kind;
}

void TEditHistory::MarkSaved() {
  fSavedState = CurrentState();
  fCanJoin = false;
  if (fSink) fSink->SavedStateChanged(true);
}

void TEditHistory::MarkUnsaved() {
  fSavedState = kNoState;
  if (fSink) fSink->SavedStateChanged(false);
}
