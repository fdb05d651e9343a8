#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** From line `first` on (from 0), `removed` lines give way to `lines`. */
struct TLinesChange {
  int32 first = 0;
  int32 removed = 0;
  std::list<std::string> lines;
};

/** What kind of work a change was. */
enum class TEditKind { kTyping, kStamp, kOther };
