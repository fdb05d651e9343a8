#include "lyrics/edit_history.h"

#include <algorithm>
#include <iterator>

namespace {

/** A pause of this length ends a step of typing. */
constexpr bigtime_t kPauseUs = 1000000;
/** The oldest steps are dropped beyond either limit; the last step is always kept. */
constexpr size_t kMaxSteps = 20000;
constexpr size_t kMaxBytes = 128 << 20;

std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + '\n';
  return text;
}

std::list<std::string> split_lines(std::string_view text) {
  std::list<std::string> lines;
  for (size_t end = text.find('\n'); end != std::string_view::npos; end = text.find('\n')) {
    lines.emplace_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  return lines;
}

void drop_common_end(std::string* left, std::string* right) {
  const auto end = std::mismatch(left->rbegin(), left->rend(), right->rbegin(), right->rend()).first;
  const auto same = static_cast<size_t>(end - left->rbegin());
  left->resize(left->size() - same);
  right->resize(right->size() - same);
}

} // namespace

void TEditHistory::Reset(std::list<std::string> lines) {
  fLines.assign(std::move_iterator(lines.begin()), std::move_iterator(lines.end()));
  fSteps.clear();
  fDone = 0;
  fBytes = 0;
  fFirstState = fSavedState = ++fLastState;
  fCanJoin = false;
}

bool TEditHistory::Record(const TLinesChange& change, TEditKind kind, int32 lineBefore, int32 lineAfter,
                          bigtime_t nowUs) {
  const auto count = static_cast<int64>(fLines.size());
  if (change.first < 0 || change.removed < 0 || int64{change.first} + change.removed > count) return false;
  Step step = MakeStep(change);
  if (kind == TEditKind::kTyping && step.before == step.after && step.countBefore == step.countAfter) return true;
  const bool joins = JoinsLast(change, kind, nowUs);
  DropRedo();
  Apply(change);
  if (joins) {
    fBytes += change.lines.front().size() + 1 - fSteps.back().after.size();
    fSteps.back().after = change.lines.front() + '\n';
    fSteps.back().whenUs = nowUs;
    return true;
  }
  step.kind = kind;
  step.lineBefore = lineBefore;
  step.lineAfter = lineAfter;
  step.whenUs = nowUs;
  Push(std::move(step));
  fCanJoin = kind == TEditKind::kTyping;
  return true;
}

TEditHistory::Step TEditHistory::MakeStep(const TLinesChange& change) const {
  const auto first = fLines.begin() + change.first;
  std::vector<std::string> before(first, first + change.removed);
  std::vector<std::string> after(change.lines.begin(), change.lines.end());
  Step step;
  step.first = change.first;
  step.countBefore = change.removed;
  step.countAfter = static_cast<int32>(after.size());
  // A single line is stored whole, so that further typing can join the step.
  step.areHeads = before.size() == after.size() && before.size() > 1;
  for (size_t i = 0; step.areHeads && i < before.size(); ++i) drop_common_end(&before[i], &after[i]);
  step.before = joined(before);
  step.after = joined(after);
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
  replay.change.first = step.first;
  replay.change.removed = undoing ? step.countAfter : step.countBefore;
  replay.change.lines = split_lines(undoing ? step.before : step.after);
  if (!step.areHeads) return replay;
  const std::list<std::string> oldHeads = split_lines(undoing ? step.after : step.before);
  auto oldHead = oldHeads.begin();
  auto line = fLines.begin() + step.first;
  for (std::string& head : replay.change.lines) head.append(*line++, oldHead++->size(), std::string::npos);
  return replay;
}

std::optional<TReplay> TEditHistory::Next(TReplayDirection direction) const {
  if (!Can(direction)) return {};
  return ReplayOf(fSteps[direction == TReplayDirection::kUndo ? fDone - 1 : fDone], direction);
}

std::optional<TReplay> TEditHistory::Replay(TReplayDirection direction) {
  std::optional<TReplay> replay = Next(direction);
  if (!replay) return {};
  Apply(replay->change);
  fDone = direction == TReplayDirection::kUndo ? fDone - 1 : fDone + 1;
  fCanJoin = false;
  return replay;
}

std::optional<TEditKind> TEditHistory::LastKind() const {
  if (fDone == 0) return {};
  return fSteps[fDone - 1].kind;
}

void TEditHistory::MarkSaved() {
  fSavedState = CurrentState();
  fCanJoin = false;
}
