#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** What happened to a text, in lines that line feeds part: from `first` on, `removed` lines gave way to `lines`. */
struct text_change {
  int32 first = 0;
  int32 removed = 0;
  std::list<std::string> lines;
  /** How many lines the text has now; one more than it has line feeds. */
  int32 count = 1;
};
