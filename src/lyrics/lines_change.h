#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** Replaces `removed` lines, from line `first` (counted from 0), by `lines`. */
struct TLinesChange {
  int32 first = 0;
  int32 removed = 0;
  std::list<std::string> lines;
};

/** The kind of command that made a change. */
enum class TEditKind { kTyping, kStamp, kOther };
