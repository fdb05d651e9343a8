/** The tag input view's keys and the commands that they run. */

#include "commands/key_bindings.h"
#include "editviews/tag_input_item.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "platform/app/message.h"
#include "platform/interface/list_peer.h"
#include "platform/interface/window.h"
#include "platform/kernel/threads.h"
#include "plugin/message_codes.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

using enum TCommandId;

constexpr int32 kSkipMs = 2000;
constexpr int32 kSpeedPoints = 5;
/** For a listener who wants to hear the line before. */
constexpr int32 kLeadInMs = 1000;

/** Default keys that reach KeyDown as a byte, whichever keyboard layout types them. */
struct TKeyByte {
  uint8 byte;
  bool withCommandKey;
  TCommandId id;
};
constexpr auto kKeyBytes = std::to_array<TKeyByte>({
    {B_SPACE, false, kStamp},
    {B_BACKSPACE, false, kRetake},
    {'+', false, kLater},
    {'-', false, kEarlier},
    {B_DELETE, false, kRemoveTag},
    {B_RETURN, false, kPlayFrom},
    {B_SPACE, true, kPlayPause},
    {B_LEFT_ARROW, true, kBack},
    {B_RIGHT_ARROW, true, kForward},
    {B_UP_ARROW, true, kFaster},
    {B_DOWN_ARROW, true, kSlower},
});

std::optional<TCommandId> command_of_byte(char byte, bool withCommandKey) {
  const auto found = std::ranges::find_if(kKeyBytes, [&](const TKeyByte& key) {
    return key.byte == static_cast<uint8>(byte) && key.withCommandKey == withCommandKey;
  });
  return found == kKeyBytes.end() ? std::nullopt : std::optional(found->id);
}

bool is_for_words(TCommandId id) {
  constexpr TCommandId kCommandsForWords[] = {kJoinWords, kSplitWord, kClearWords, kUnstampFromHere, kCopyWordTimes};
  return std::ranges::find(kCommandsForWords, id) != std::end(kCommandsForWords);
}

bool is_caret_key(char byte) {
  return byte == B_LEFT_ARROW || byte == B_RIGHT_ARROW;
}

bool has_key_byte(TCommandId id) {
  return std::ranges::find(kKeyBytes, id, &TKeyByte::id) != kKeyBytes.end();
}

} // namespace

void TTagInputView::KeysChanged() {
  const auto keys = current_keys();
  std::vector<display::ListShortcut> shortcuts;
  for (const TEditorCommand& each : all_commands()) {
    if (each.target != TCommandTarget::kTagInput || keys->Of(each.id).empty()) continue;
    if (is_for_words(each.id) && !fChoices->timesWords) continue;
    if (has_key_byte(each.id) && keys->IsDefault(each.id)) continue; // comes to KeyDown
    shortcuts.push_back({keys->Of(each.id), static_cast<int32>(each.id), each.repeats});
  }
  SetShortcuts(std::move(shortcuts));
}

void TTagInputView::MessageReceived(BMessage* message) {
  if (message->what == kMsgReplayBeat) return fReplay.Beat();
  if (message->what == display::DISPLAY_KEY_RELEASED) return KeyReleased(*message);
  if (message->what == display::DISPLAY_ROWS_WANTED) {
    MarkProblems(*message);
    MarkWords(*message);
  }
  BListView::MessageReceived(message);
}

void TTagInputView::KeyDown(const char* bytes, int32 count) {
  fFollowing.KeyPressed(system_time());
  const bool isShiftInsert = count == 1 && bytes[0] == B_INSERT && HasModifier(B_SHIFT_KEY);
  if (isShiftInsert && !IsKeyRepeat()) return RunCommand(kPaste); // the older key for it
  const auto id = count > 0 ? command_of_byte(bytes[0], IsCommand()) : std::nullopt;
  if (fChoices->timesWords && !IsCommand() && count == 1 && is_caret_key(bytes[0]))
    return MoveCaret(bytes[0] == B_RIGHT_ARROW);
  if (!id) return BListView::KeyDown(bytes, count);
  if (!current_keys()->IsDefault(*id)) return BView::KeyDown(bytes, count); // without a meaning here
  // One press of the space bar, one tag, however long it is held.
  if (command(*id).repeats || !IsKeyRepeat()) RunCommand(*id);
}

void TTagInputView::ShortcutPressed(int32 number) {
  fFollowing.KeyPressed(system_time());
  const auto id = command_of(number);
  if (id && command(*id).target == TCommandTarget::kTagInput) RunCommand(*id);
}

void TTagInputView::RetakeRqtd() {
  if (Listener()) Listener()->RetakeRqtd();
}

void TTagInputView::RunCommand(TCommandId id) {
  switch (id) {
  case kStamp:
    return fChoices->timesWords ? TapWord() : InputTagRqtd();
  case kRetake:
    return fChoices->timesWords ? TakeBackWord() : RetakeRqtd();
  case kLater:
  case kEarlier:
    return IncDecTagRqtd(id == kLater ? '+' : '-');
  case kRemoveTag:
    return RemoveTagRqtd();
  case kPlayFrom:
    return Invoke();
  case kPlayBefore:
    return PlayFrom(kLeadInMs);
  case kLater10:
    return NudgeBy(10);
  case kEarlier10:
    return NudgeBy(-10);
  case kLater100:
    return NudgeBy(100);
  case kEarlier100:
    return NudgeBy(-100);
  case kLater500:
    return NudgeBy(500);
  case kEarlier500:
    return NudgeBy(-500);
  case kWordByWord:
    return ToggleWordByWord();
  case kFollow:
    return ToggleFollowing();
  case kGoToSung:
    return GoToSungRow();
  case kFromStart:
    return GoToStart();
  case kNextProblem:
  case kPreviousProblem:
    return GoToProblem(id == kNextProblem);
  case kNextUntagged:
  case kPreviousUntagged:
    return GoToUntagged(id == kNextUntagged);
  case kShiftFromHere:
    return ShiftRqtd(CurrentSelection(), INT32_MAX);
  case kShiftSelected:
    return ShiftRqtd(Selection().first, Selection().Count());
  default:
    return is_for_words(id) ? RunWordCommand(id) : RunPlayerCommand(id);
  }
}

/** The window adds what the view does not know, and asks for the amount. */
void TTagInputView::ShiftRqtd(int32 firstRow, int32 count) {
  if (Item(firstRow) == nullptr || !Window()) return;
  BMessage shift(kMsgFineTimeTag);
  shift.AddInt32("First", firstRow);
  shift.AddInt32("Count", count);
  Window()->PostMessage(&shift);
}

void TTagInputView::RunPlayerCommand(TCommandId id) {
  switch (id) {
  case kPlayPause:
    fReplay.Cancel();
    fFrontEnd->PlayPause();
    return;
  case kBack:
  case kForward:
    fReplay.Cancel();
    fFrontEnd->SeekBy(id == kForward ? kSkipMs : -kSkipMs);
    return;
  case kFaster:
  case kSlower:
    fFrontEnd->ChangeSpeed(id == kFaster ? kSpeedPoints : -kSpeedPoints);
    return;
  default:
    return RunLineCommand(id);
  }
}
