#pragma once

#include <cstddef>
#include <optional>

/** The player's front-end protocol, as this side sees it. */

inline constexpr const char* kHostSignature = "application/x-vnd.Marvik-Sonivo";

/** What the player tells of itself, in the machine's own byte order. */
struct THostInformation {
  static constexpr size_t kSize = 124;
  static constexpr size_t kPositionAt = 4; // int32, ms
  static constexpr size_t kTitleAt = 12;   // to its NUL or the end
  char bytes[kSize] = {};
  /** Stands beside the bytes; empty when the player does not tell. */
  std::optional<bool> isPlaying;
};
