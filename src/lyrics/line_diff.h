#pragma once

#include "platform/support/types.h"

#include <string>
#include <vector>

/** Lines of the old text that are replaced by lines of the new one. Counted from 0. */
struct TLineHunk {
  int32 oldFirst = 0;
  int32 oldCount = 0;
  int32 newFirst = 0;
  int32 newCount = 0;
  friend bool operator==(const TLineHunk&, const TLineHunk&) = default;
};

/** The differences in the order of the text; empty for equal texts. The shortest edit script (Myers' algorithm); texts
    that differ too much for it have one hunk from the first to the last difference. Pure: any thread. */
std::vector<TLineHunk> line_diff(const std::vector<std::string>& before, const std::vector<std::string>& after);

/** The hunks as text, a line each: its number, "-" or "+", and the line. After `maxLines` of them ends with "…". */
std::string diff_text(const std::vector<std::string>& before, const std::vector<std::string>& after, int maxLines);
