#pragma once

#include "platform/support/types.h"

#include <string>
#include <string_view>

/** Metadata of a song; a text is empty, and a number 0, if unknown. */
struct TSongTags {
  std::string title;
  std::string artist;
  int32 durationMs = 0;
  std::string album = {};
  int32 track = 0; // within its album, from 1 on

  bool operator==(const TSongTags&) const = default;
};

inline constexpr int32 kHighestTrack = 9999;
/** The number of a track tag such as "3" or "03/12"; 0 for anything else. */
int32 track_number(std::string_view tag);
