#pragma once

#include "platform/support/types.h"

#include <list>
#include <string>

/** A change of a text, in lines separated by line feeds: from `first` on, `removed` lines were replaced by `lines`. */
struct text_change {
  int32 first = 0;
  int32 removed = 0;
  std::list<std::string> lines;
  /** Number of lines of the new text: one more than its line feeds. */
  int32 count = 1;
};
