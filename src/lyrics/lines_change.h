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

/** The selected lines: the current one, up or down to the other end. */
struct TSelectedLines {
  /** The current line alone. */
  TSelectedLines(int32 line) : current(line), anchor(line) {} // implicit: most commands work on one line
  TSelectedLines(int32 currentLine, int32 otherEnd) : current(currentLine), anchor(otherEnd) {}

  int32 current;
  int32 anchor;
};

/** The kind of command that made a change. The numbers are stored in journals. kUnifyAsCommon gives mixed time tags one
    form, and the document the common dialect (lyrics/dialect.h). */
enum class TEditKind { kTyping, kStamp, kOther, kUnifyAsCommon };
