#pragma once

#include "platform/support/types.h"

/** The player's front-end protocol, as this side sees it. */

inline constexpr const char* kHostSignature = "application/x-vnd.Marvik-Sonivo";

/** To the player: no fields. Back: messenger "Msgr", the private way to it. */
inline constexpr uint32 kMsgHostHandshake = 'SNVm';
/** To that messenger: no fields. Back: data "Info" of type 'CSTR', the information record. */
inline constexpr uint32 kMsgHostInformation = 'SNVi';

/** What the player tells of itself, in the machine's own byte order. */
struct THostInformation {
  static constexpr size_t kSize = 124;
  static constexpr size_t kPositionAt = 4; // int32, ms
  static constexpr size_t kTitleAt = 12;   // to its NUL or the end
  char bytes[kSize] = {};
};
