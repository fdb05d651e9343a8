#pragma once

#include "platform/support/types.h"

#include <optional>
#include <string>
#include <vector>

/** Finds and replaces text within the lines of a document. Pure: any thread. */

struct TFindOptions {
  std::string text; // nothing is found when it is empty
  bool matchesCase = false;
  bool leavesOutTags = true; // what overlaps a time tag does not count
};

/** In bytes. */
struct TMatch {
  size_t begin = 0;
  size_t length = 0;
};

/** From left to right, without overlaps. Without `matchesCase`, characters are compared by Unicode case folding. */
std::vector<TMatch> matches_in(const std::string& line, const TFindOptions& options);

/** The line with these matches replaced. */
std::string replaced(const std::string& line, const std::vector<TMatch>& matches, const std::string& by);

struct TMatchInLine {
  int32 line = 0;
  TMatch match;
};
/** Where a search begins: at a line, behind (or, going back, in front of) that byte. */
struct TFindPlace {
  int32 line = 0;
  size_t byte = 0;
};
/** The nearest match from there; the search goes on at the other end of the document. */
std::optional<TMatchInLine> nearest_match(const std::vector<std::string>& lines, const TFindOptions& options,
                                          const TFindPlace& from, bool backward);
