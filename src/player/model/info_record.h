#pragma once

#include "platform/support/types.h"

#include <cstddef>
#include <string>
#include <string_view>

/** What the player tells of itself, 124 bytes in the machine's own byte order. */
struct TInfoRecord {
  static constexpr int32 kStopped = 0;
  static constexpr int32 kPlaying = 1;
  static constexpr int32 kPaused = 2;
  int32 state = kStopped;
  int32 positionMs = 0; // the moment of the song that is heard
  int32 durationMs = 0;
  char title[112] = {}; // ends at a NUL
};
// Front ends read it by these places.
static_assert(sizeof(TInfoRecord) == 124 && offsetof(TInfoRecord, positionMs) == 4 &&
              offsetof(TInfoRecord, title) == 12);

/** The text as the record can hold it: at most 111 bytes, cut between characters. */
std::string cut_title(std::string_view title);
void set_title(TInfoRecord* record, std::string_view title);
