#pragma once

#include "platform/support/types.h"

#include <cstddef>
#include <optional>

/** The front end's side of the player protocol; codes in plugin/message_codes.h. */

inline constexpr const char* kHostSignature = "application/x-vnd.Marvik-Sonivo";

/** The player's information record, in native byte order. */
struct THostInformation {
  static constexpr size_t kSize = 124;
  static constexpr size_t kPositionAt = 4; // int32, ms
  static constexpr size_t kDurationAt = 8; // int32, ms
  static constexpr size_t kTitleAt = 12;   // up to its NUL or the end
  char bytes[kSize] = {};
  /** Not part of the bytes; empty if the player does not report it. */
  std::optional<bool> isPlaying;
  /** Not part of the bytes either. */
  int32 speedPercent = 100;
  /** The earlier moment of the position, which the player was asked for; empty if the position was current when the
     player answered. Nor part of the bytes. */
  std::optional<bigtime_t> whenUs;
};
