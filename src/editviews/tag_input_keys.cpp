#include "editviews/tag_input_keys.h"

#include "platform/interface/view.h"

#include <algorithm>
#include <array>

namespace {

using enum TCommandId;

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

bool has_key_byte(TCommandId id) {
  return std::ranges::find(kKeyBytes, id, &TKeyByte::id) != kKeyBytes.end();
}

} // namespace

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

std::vector<display::ListShortcut> tag_input_shortcuts(const TKeys& keys, bool timesWords) {
  std::vector<display::ListShortcut> shortcuts;
  for (const TEditorCommand& each : all_commands()) {
    if (each.target != TCommandTarget::kTagInput || keys.Of(each.id).empty()) continue;
    if (is_for_words(each.id) && !timesWords) continue;
    if (has_key_byte(each.id) && keys.IsDefault(each.id)) continue; // comes as a byte
    shortcuts.push_back({keys.Of(each.id), static_cast<int32>(each.id), each.repeats});
  }
  return shortcuts;
}
