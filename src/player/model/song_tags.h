#pragma once

#include "platform/support/types.h"

#include <string>

/** What a song says of itself; texts are empty where it is silent. */
struct TSongTags {
  std::string title;
  std::string artist;
  int32 durationMs = 0;

  bool operator==(const TSongTags&) const = default;
};
