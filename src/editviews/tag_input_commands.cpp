/** The tag input view's keys and the commands that they run. */

#include "commands/key_bindings.h"
#include "editviews/tag_input_view.h"
#include "hostlink/host_link.h"
#include "platform/interface/list_peer.h"

#include <algorithm>
#include <array>
#include <memory>

namespace {

using enum TCommandId;

constexpr int32 kSkipMs = 2000;
constexpr int32 kSpeedPoints = 5;

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

bool has_key_byte(TCommandId id) {
  return std::ranges::find(kKeyBytes, id, &TKeyByte::id) != kKeyBytes.end();
}

} // namespace

void TTagInputView::KeysChanged() {
  const auto keys = current_keys();
  std::vector<display::ListShortcut> shortcuts;
  for (const TCommand& each : all_commands()) {
    if (each.target != TCommandTarget::kTagInput || keys->Of(each.id).empty()) continue;
    if (has_key_byte(each.id) && keys->IsDefault(each.id)) continue; // comes to KeyDown
    shortcuts.push_back({keys->Of(each.id), static_cast<int32>(each.id), each.repeats});
  }
  SetShortcuts(std::move(shortcuts));
}

void TTagInputView::KeyDown(const char* bytes, int32 count) {
  const bool isShiftInsert = count == 1 && bytes[0] == B_INSERT && HasModifier(B_SHIFT_KEY);
  if (isShiftInsert && !IsKeyRepeat()) return RunCommand(kPaste); // the older key for it
  const auto id = count > 0 ? command_of_byte(bytes[0], IsCommand()) : std::nullopt;
  if (!id) return BListView::KeyDown(bytes, count);
  if (!current_keys()->IsDefault(*id)) return BView::KeyDown(bytes, count); // without a meaning here
  // One press of the space bar, one tag, however long it is held.
  if (command(*id).repeats || !IsKeyRepeat()) RunCommand(*id);
}

void TTagInputView::ShortcutPressed(int32 number) {
  const auto id = command_of(number);
  if (id && command(*id).target == TCommandTarget::kTagInput) RunCommand(*id);
}

void TTagInputView::RetakeRqtd() {
  if (Listener()) Listener()->RetakeRqtd();
}

void TTagInputView::RunCommand(TCommandId id) {
  switch (id) {
  case kStamp:
    return InputTagRqtd();
  case kRetake:
    return RetakeRqtd();
  case kLater:
  case kEarlier:
    return IncDecTagRqtd(id == kLater ? '+' : '-');
  case kRemoveTag:
    return RemoveTagRqtd();
  case kPlayFrom:
    return Invoke();
  case kPlayPause:
    fFrontEnd->PlayPause();
    return;
  case kBack:
  case kForward:
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
