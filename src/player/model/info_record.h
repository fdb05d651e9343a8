#pragma once

#include "platform/support/types.h"

#include <cstddef>
#include <string>
#include <string_view>

/** What front ends learn of the player: 124 bytes in native byte order. */
struct TInfoRecord {
  static constexpr int32 kStopped = 0;
  static constexpr int32 kPlaying = 1;
  static constexpr int32 kPaused = 2;
  int32 state = kStopped;
  int32 positionMs = 0; // of the sound that is heard
  int32 durationMs = 0;
  char title[112] = {}; // NUL-terminated
};
// Front ends rely on these offsets.
static_assert(sizeof(TInfoRecord) == 124 && offsetof(TInfoRecord, positionMs) == 4 &&
              offsetof(TInfoRecord, title) == 12);

/** The title truncated for the record: at most 111 bytes, at a character boundary. */
std::string cut_title(std::string_view title);
void set_title(TInfoRecord* record, std::string_view title);
