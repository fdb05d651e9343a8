#pragma once

#include "platform/support/types.h"

#include <optional>

/** How the lyrics are edited. The numbers are those of the messages' field "Mode" and of the stored window state. */
enum class TEditMode : int32 { kTagInputExtended = 0, kTagInputStandard = 1, kFreeEdit = 2 };
inline constexpr int32 kEditModes = 3;

/** Nothing for a number of no mode. */
constexpr std::optional<TEditMode> edit_mode_of(int32 number) {
  if (number < 0 || number >= kEditModes) return {};
  return static_cast<TEditMode>(number);
}
